// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/HeifRenderer.h"

#include "platform/imageio/HeifTiles.h"
#include "platform/imageio/JpegDecoder.h"
#include "platform/imageio/JpegMarkers.h"
#include "platform/imageio/Resampler.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 mostPixels = 400'000'000;
/// Pictures made of pictures; cameras have one storey.
constexpr int mostStoreys = 4;
/// 100 megapixels in tiles of 256 x 256.
constexpr qsizetype mostTiles = 4096;
constexpr qsizetype mostLayers = 16;
/// Tiles of one colour are small, and may be one that is named often.
constexpr qint64 mostRepeatedBytes = qint64{64} * 1024 * 1024;
/// A picture and its transparency in tiles.
constexpr int mostItems = 2 * mostTiles + 2 * mostStoreys;

qint64 pixelCount(QSize size)
{
    return qint64{size.width()} * size.height();
}

bool isCoded(const HeifItem &item)
{
    return item.type == "hvc1" || item.type == "hev1";
}

struct Grid {
    int columns = 0;
    int rows = 0;
    QSize size = {};
};

/// The content of a grid item (ISO 23008-12, 6.6.2.3.2).
std::optional<Grid> readGrid(const QByteArray &data)
{
    ByteCursor content(data);
    content.skip(1);
    const int numberSize = (content.take(1) & 1) != 0 ? 4 : 2;
    Grid grid;
    grid.rows = static_cast<int>(content.take(1)) + 1;
    grid.columns = static_cast<int>(content.take(1)) + 1;
    const auto width = content.take(numberSize);
    const auto height = content.take(numberSize);
    if (content.failed() || width < 1 || height < 1 || width > mostPixels || height > mostPixels) {
        return std::nullopt;
    }
    grid.size = {static_cast<int>(width), static_cast<int>(height)};
    return grid;
}

struct Overlay {
    QSize size = {};
    QRgb color = 0;
    QList<QPoint> corners = {};
};

/// The content of an overlay item (ISO 23008-12, 6.6.2.2.2).
std::optional<Overlay> readOverlay(const QByteArray &data, qsizetype layers)
{
    ByteCursor content(data);
    content.skip(1);
    const int numberSize = (content.take(1) & 1) != 0 ? 4 : 2;
    const auto takeByte = [&] { return static_cast<int>(content.take(2) >> 8); };
    const auto takePlace = [&] {
        const auto value = content.take(numberSize);
        return numberSize == 2 ? int{static_cast<qint16>(value)} : static_cast<qint32>(value);
    };
    Overlay overlay;
    const int red = takeByte();
    const int green = takeByte();
    const int blue = takeByte();
    overlay.color = takeByte() > 0 ? qRgb(red, green, blue) : qRgb(0, 0, 0);
    const auto width = content.take(numberSize);
    const auto height = content.take(numberSize);
    for (qsizetype layer = 0; layer < layers; ++layer) {
        const int x = takePlace();
        const int y = takePlace();
        overlay.corners.append({x, y});
    }
    if (content.failed() || width < 1 || height < 1 || width > mostPixels || height > mostPixels) {
        return std::nullopt;
    }
    overlay.size = {static_cast<int>(width), static_cast<int>(height)};
    return overlay;
}

/// Copies what of @p part lies on @p canvas.
void put(QImage &canvas, const QImage &part, QPoint corner)
{
    const QRect whole(QPoint(0, 0), canvas.size());
    constexpr int farAway = 1 << 30;
    const auto isFar = [](int place) { return place < -farAway || place > farAway; };
    if (isFar(corner.x()) || isFar(corner.y())) {
        return;
    }
    const auto covered = QRect(corner, part.size()).intersected(whole);
    for (int row = covered.top(); row <= covered.bottom(); ++row) {
        const auto *from = reinterpret_cast<const QRgb *>(part.constScanLine(row - corner.y()));
        auto *to = reinterpret_cast<QRgb *>(canvas.scanLine(row));
        std::copy_n(from + (covered.left() - corner.x()), covered.width(), to + covered.left());
    }
}

/// What the stream itself says; empty when it is no picture.
QSize jpegSize(const InputFile &file, const HeifItem &item)
{
    PagedReader reader(file);
    const auto markers =
        item.extents.size() == 1 ? JpegMarkers::read(reader, item.extents.first()) : std::nullopt;
    return markers && markers->isPicture
               ? QSize(static_cast<int>(*markers->width), static_cast<int>(*markers->height))
               : QSize();
}

} // namespace

HeifRenderer::HeifRenderer(const InputFile &file, const HeifCatalog &catalog, qint64 memory)
    : m_file(file)
    , m_catalog(catalog)
    , m_memory(memory)
    , m_pixelsLeft(2 * mostPixels)
    , m_bytesLeft(2 * file.size() + mostRepeatedBytes)
    , m_itemsLeft(mostItems)
{
}

std::optional<HeifRenderer::Picture> HeifRenderer::render(const HeifItem &item)
{
    return renderItem(item, {});
}

std::optional<HeifRenderer::Picture> HeifRenderer::renderPart(quint32 id, Context context)
{
    ++context.storeys;
    const bool mayLook = context.storeys < mostStoreys && m_itemsLeft-- > 0;
    const auto item = mayLook ? m_catalog.item(id) : std::nullopt;
    return item ? renderItem(*item, context) : std::nullopt;
}

std::optional<HeifRenderer::Picture> HeifRenderer::renderItem(const HeifItem &item, Context context)
{
    context.describesColors = context.describesColors || item.describesColors();
    std::optional<Picture> picture;
    if (isCoded(item)) {
        picture = renderTiles(item);
    } else if (item.type == "jpeg") {
        picture = renderJpeg(item, context);
    } else if (item.type == "iden") {
        picture = renderIdentity(item, context);
    } else if (item.type == "grid") {
        picture = renderGrid(item, context);
    } else if (item.type == "iovl") {
        picture = renderOverlay(item, context);
    }
    if (!picture) {
        return std::nullopt;
    }
    picture->steps += item.steps;
    if (item.icc.length > 0) {
        picture->icc = item.icc;
    } else if (item.type == "iden" && item.describesColors() && picture->icc.length <= 0) {
        picture->color = *item.color;
    }
    return picture;
}

/// For @p count pictures of @p size.
bool HeifRenderer::spend(QSize size, qint64 count)
{
    const auto pixels = pixelCount(size);
    if (size.isEmpty() || pixels > std::min(mostPixels, m_pixelsLeft / count)) {
        return false;
    }
    m_pixelsLeft -= pixels * count;
    return true;
}

bool HeifRenderer::spend(const QList<HeifItem> &coded)
{
    qint64 bytes = 0;
    for (const auto &item : coded) {
        for (const auto &extent : item.extents) {
            bytes += extent.length;
        }
    }
    if (bytes > m_bytesLeft) {
        return false;
    }
    m_bytesLeft -= bytes;
    return true;
}

std::optional<HeifRenderer::Picture> HeifRenderer::renderTiles(const HeifItem &item)
{
    // The decoder holds itself to the memory; a picture much larger than said is damaged.
    if (!spend(item.size) || !spend(QList{item})) {
        return std::nullopt;
    }
    auto tiles = HeifTiles::open(m_file, {item}, {.tile = item.size}, item.color, m_memory);
    if (!tiles || pixelCount(tiles->size()) > 2 * pixelCount(item.size)) {
        return std::nullopt;
    }
    const auto color = tiles->color();
    return Picture{.rows = std::move(tiles), .color = color};
}

std::optional<HeifRenderer::Picture> HeifRenderer::renderJpeg(const HeifItem &item, Context context)
{
    const auto size = jpegSize(m_file, item);
    // The decoder keeps the coefficients of a progressive picture, beside the rows.
    constexpr qint64 mostBytesPerPixel = 10;
    if (pixelCount(size) > 2 * pixelCount(item.size) ||
        pixelCount(size) * mostBytesPerPixel > m_memory || !spend(size) || !spend(QList{item})) {
        return std::nullopt;
    }
    constexpr int asStored = 1;
    const auto profile = context.describesColors ? std::optional<QByteArray>("") : std::nullopt;
    auto image =
        JpegDecoder::decode(m_file, item.extents.first(), std::nullopt, asStored,
                            JpegDecoder::Preview::Ignored, JpegDecoder::Untagged::Srgb, profile);
    if (image.isNull()) {
        return std::nullopt;
    }
    return Picture{.rows = std::make_unique<ImageRows>(std::move(image)),
                   .color = item.color.value_or(CodedColor())};
}

std::optional<HeifRenderer::Picture> HeifRenderer::renderIdentity(const HeifItem &item,
                                                                  Context context)
{
    return item.inputs.isEmpty() ? std::nullopt : renderPart(item.inputs.first(), context);
}

std::optional<HeifRenderer::Picture> HeifRenderer::renderGrid(const HeifItem &item, Context context)
{
    constexpr qint64 longestContent = 12;
    const auto grid = readGrid(m_catalog.data(item, longestContent));
    const auto count = grid ? qsizetype{grid->columns} * grid->rows : 0;
    if (count < 1 || count > std::min(mostTiles, item.inputs.size())) {
        return std::nullopt;
    }
    QList<HeifItem> tiles;
    bool plain = true;
    for (qsizetype index = 0; index < count; ++index) {
        const auto tile = m_catalog.item(item.inputs.at(index));
        if (!tile) {
            return std::nullopt;
        }
        plain = plain && isCoded(*tile) && tile->steps.isEmpty();
        tiles.append(*tile);
    }
    const auto size = tiles.first().size;
    const auto icc = tiles.first().icc;
    // Tiles cover the picture; their sizes are what damage can make larger than that.
    if (pixelCount(grid->size) > mostPixels || pixelCount(size) > mostPixels / count) {
        return std::nullopt;
    }
    if (plain) {
        m_itemsLeft -= static_cast<int>(count);
        if (m_itemsLeft < 0 || !spend(tiles)) {
            return std::nullopt;
        }
        auto rows = HeifTiles::open(
            m_file, std::move(tiles),
            {.columns = grid->columns, .rows = grid->rows, .tile = size, .picture = grid->size},
            item.color, m_memory);
        // They may be larger than the picture that they are cut to.
        if (!rows || !spend(rows->tileSize(), count)) {
            return std::nullopt;
        }
        const auto color = rows->color();
        return Picture{.rows = std::move(rows), .icc = icc, .color = color};
    }
    QList<Part> parts;
    for (int index = 0; index < count; ++index) {
        const auto shown = HeifPlacement::of(size, tiles.at(index).steps).shownSize();
        parts.append(
            {item.inputs.at(index),
             {index % grid->columns * shown.width(), index / grid->columns * shown.height()}});
    }
    return renderCanvas(item, canvas(grid->size, qRgb(0, 0, 0)), parts, context);
}

std::optional<HeifRenderer::Picture> HeifRenderer::renderOverlay(const HeifItem &item,
                                                                 Context context)
{
    constexpr qint64 longestContent = 64 * 1024;
    if (item.inputs.size() > mostLayers) {
        return std::nullopt;
    }
    const auto overlay = readOverlay(m_catalog.data(item, longestContent), item.inputs.size());
    if (!overlay) {
        return std::nullopt;
    }
    QList<Part> parts;
    for (qsizetype layer = 0; layer < item.inputs.size(); ++layer) {
        parts.append({item.inputs.at(layer), overlay->corners.at(layer)});
    }
    return renderCanvas(item, canvas(overlay->size, overlay->color), parts, context);
}

QImage HeifRenderer::canvas(QSize size, QRgb color)
{
    // Beside it and those that it is a part of lie a part as decoded and as an image.
    const auto mostAtOnce = m_memory / (3 * qint64{sizeof(QRgb)});
    if (m_canvasPixels + pixelCount(size) > mostAtOnce || !spend(size)) {
        return {};
    }
    m_canvasPixels += pixelCount(size);
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(color));
    return image;
}

std::optional<HeifRenderer::Picture> HeifRenderer::renderCanvas(const HeifItem &item, QImage canvas,
                                                                const QList<Part> &parts,
                                                                Context context)
{
    if (canvas.isNull()) {
        return std::nullopt;
    }
    Picture result;
    const auto canvasPixels = m_canvasPixels;
    for (const auto &part : parts) {
        m_canvasPixels = canvasPixels; // those of the part before are gone
        auto picture = renderPart(part.id, context);
        if (!picture || pixelCount(picture->rows->size()) * qint64{sizeof(QRgb)} > m_memory / 3) {
            return std::nullopt;
        }
        const auto placement = HeifPlacement::of(picture->rows->size(), picture->steps);
        if (!spend(placement.window.size())) {
            return std::nullopt;
        }
        put(canvas, drawn(*picture->rows, placement, placement.window.size()), part.corner);
        if (&part == &parts.first()) {
            result.icc = picture->icc;
            result.color = picture->color;
        }
    }
    if (item.color) {
        result.color = *item.color;
    }
    result.rows = std::make_unique<ImageRows>(std::move(canvas));
    return result;
}

QImage drawn(PictureRows &rows, const HeifPlacement &placement, QSize target)
{
    const auto &window = placement.window;
    UprightPicture picture(target, placement.orientation);
    if (!picture.isValid() || window.isEmpty()) {
        return {};
    }
    std::vector<QRgb> row(static_cast<size_t>(rows.size().width()));
    const auto forEachRow = [&](auto take) {
        for (int index = 0; index <= window.bottom() && rows.readRow(row.data()); ++index) {
            if (index >= window.top()) {
                take(row.data() + window.left());
            }
        }
    };
    if (target == window.size()) {
        forEachRow([&](const QRgb *pixels) { picture.addRow(pixels); });
    } else {
        Resampler resampler(window.size(), target, picture);
        forEachRow([&](const QRgb *pixels) { resampler.addRow(pixels); });
    }
    return picture.take();
}
