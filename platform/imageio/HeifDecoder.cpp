// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/HeifDecoder.h"

#include "platform/imageio/ColorProfile.h"
#include "platform/imageio/HeifRenderer.h"
#include "platform/imageio/JpegDecoder.h"
#include "platform/imageio/JpegMarkers.h"
#include "platform/imageio/ToneCurve.h"

#include <algorithm>
#include <cstdlib>

namespace {

/// For the picture and what is needed to decode it: a gibibyte, less what the program is.
constexpr qint64 mostMemory = qint64{960} * 1024 * 1024;
constexpr qint64 leastWorkingMemory = qint64{64} * 1024 * 1024;
/// Smaller thumbnails are visibly less than the picture at that size.
constexpr int smallestThumbnail = 256;

int longestEdge(QSize size)
{
    return std::max(size.width(), size.height());
}

/// The size of what is shown of the picture, before it is turned, at @p maxPixel.
QSize fitted(const HeifPlacement &placement, std::optional<int> maxPixel)
{
    return JpegDecoder::fitted(placement.window.size(), maxPixel);
}

/// Whether the item's other picture is its transparency, by either of the names it goes by.
bool isAlpha(const HeifItem &item)
{
    return item.purpose == "urn:mpeg:hevc:2015:auxid:1" ||
           item.purpose == "urn:mpeg:mpegB:cicp:systems:auxiliary:alpha";
}

/// The transparency of the picture @p id, where that is still to be applied.
std::optional<HeifItem> transparency(const HeifCatalog &catalog, quint32 id)
{
    for (const auto other : catalog.auxiliaries(id)) {
        auto item = catalog.item(other);
        // Colours that are multiplied by it are over black already.
        if (item && isAlpha(*item) && !catalog.isPremultiplied(id, other)) {
            return item;
        }
    }
    return std::nullopt;
}

void addTransparency(HeifRenderer::Picture &picture, HeifRenderer &renderer,
                     const HeifCatalog &catalog, quint32 id)
{
    const auto item = transparency(catalog, id);
    auto alpha = item ? renderer.render(*item) : std::nullopt;
    if (!alpha) {
        return;
    }
    const auto size = picture.rows->size();
    if (alpha->rows->size() != size) {
        alpha->rows = std::make_unique<StretchedRows>(std::move(alpha->rows), size);
    }
    picture.rows =
        std::make_unique<TransparentRows>(std::move(picture.rows), std::move(alpha->rows));
}

QImage toSrgb(QImage image, const HeifCatalog &catalog, ByteRange icc, const CodedColor &color)
{
    const bool isHighRange = ToneCurve::table(color.transfer) != nullptr;
    return icc.length <= 0 || isHighRange
               ? ColorProfile::toSrgb(std::move(image), color)
               : ColorProfile::toSrgb(std::move(image), catalog.profile(icc));
}

/// Which picture of the file is decoded. Main pictures are shown whatever size they turn out to
/// have; thumbnails were chosen by theirs, and there is another one to show.
enum class Role { Main, Thumbnail };

/// Whether the stream of a JPEG item has the size that the item says.
bool isOfSaidSize(const InputFile &file, const HeifItem &item)
{
    PagedReader reader(file);
    const auto markers = JpegMarkers::read(reader, item.extents.first());
    return markers && markers->width == item.size.width() && markers->height == item.size.height();
}

QImage decodeItem(const InputFile &file, const HeifCatalog &catalog, quint32 id,
                  const HeifItem &item, Role role, std::optional<int> maxPixel)
{
    const auto said = HeifPlacement::of(item.size, item.steps);
    const auto bytesFor = [](QSize size) {
        return qint64{sizeof(QRgb)} * size.width() * size.height();
    };
    const auto memory = mostMemory - bytesFor(fitted(said, maxPixel));
    if (item.size.isEmpty() || memory < leastWorkingMemory) {
        return {};
    }
    const bool isPlainJpeg = item.type == "jpeg" && said.window.size() == item.size &&
                             item.extents.size() == 1 && catalog.auxiliaries(id).isEmpty();
    if (isPlainJpeg) {
        if (role == Role::Thumbnail && !isOfSaidSize(file, item)) {
            return {};
        }
        // It can be decoded at a fraction of its size.
        const bool replaces = item.describesColors();
        auto image = JpegDecoder::decode(file, item.extents.first(), maxPixel, said.orientation,
                                         JpegDecoder::Preview::Ignored, JpegDecoder::Untagged::Srgb,
                                         replaces ? std::optional<QByteArray>("") : std::nullopt);
        return toSrgb(std::move(image), catalog, item.icc, item.color.value_or(CodedColor()));
    }
    HeifRenderer renderer(file, catalog, memory);
    auto picture = renderer.render(item);
    if (!picture || (role == Role::Thumbnail && picture->rows->size() != item.size)) {
        return {};
    }
    const auto placement = HeifPlacement::of(picture->rows->size(), picture->steps);
    const auto target = fitted(placement, maxPixel);
    if (bytesFor(target) > mostMemory - leastWorkingMemory) {
        return {};
    }
    addTransparency(*picture, renderer, catalog, id);
    return toSrgb(drawn(*picture->rows, placement, target), catalog, picture->icc, picture->color);
}

/// Whether the pictures look the same at @p maxPixel. Their sizes may differ in more than a pixel
/// before: codecs like whole blocks.
bool standsFor(const HeifItem &thumbnail, const HeifItem &main, int maxPixel)
{
    if (thumbnail.size.isEmpty() || main.size.isEmpty()) {
        return false;
    }
    const auto small = HeifPlacement::of(thumbnail.size, thumbnail.steps);
    const auto large = HeifPlacement::of(main.size, main.steps);
    const auto difference = fitted(small, maxPixel) - fitted(large, maxPixel);
    return small.orientation == large.orientation &&
           longestEdge(small.window.size()) >= std::max(smallestThumbnail, maxPixel) &&
           std::abs(difference.width()) <= 1 && std::abs(difference.height()) <= 1;
}

/// Thumbnails are often left without what the picture says of its colours. The streams of JPEG say
/// it themselves.
void inheritColors(HeifItem &thumbnail, const HeifItem &main)
{
    if (thumbnail.type == "jpeg" || thumbnail.describesColors()) {
        return;
    }
    thumbnail.icc = main.icc;
    if (!thumbnail.color) {
        thumbnail.color = main.color;
    } else if (main.color) {
        thumbnail.color->primaries = main.color->primaries;
        thumbnail.color->transfer = main.color->transfer;
    }
}

QImage decodeThumbnail(const InputFile &file, const HeifCatalog &catalog, int maxPixel)
{
    const auto main = catalog.item(catalog.primary());
    const bool isTransparent = transparency(catalog, catalog.primary()).has_value();
    std::optional<quint32> best;
    HeifItem bestItem;
    for (const auto id : catalog.thumbnails(catalog.primary())) {
        auto thumbnail = catalog.item(id);
        if (!main || !thumbnail || !standsFor(*thumbnail, *main, maxPixel)) {
            continue;
        }
        if (isTransparent && !transparency(catalog, id)) {
            continue; // it shows what the picture hides
        }
        inheritColors(*thumbnail, *main);
        if (!best || longestEdge(thumbnail->size) < longestEdge(bestItem.size)) {
            best = id;
            bestItem = *thumbnail;
        }
    }
    return best ? decodeItem(file, catalog, *best, bestItem, Role::Thumbnail, maxPixel) : QImage();
}

} // namespace

QImage HeifDecoder::decode(const InputFile &file, std::optional<int> maxPixel)
{
    PagedReader reader(file);
    const auto catalog = HeifCatalog::read(reader);
    if (!catalog) {
        return {};
    }
    const auto small = maxPixel ? decodeThumbnail(file, *catalog, *maxPixel) : QImage();
    if (!small.isNull()) {
        return small;
    }
    const auto id = catalog->primary();
    const auto item = catalog->item(id);
    return item ? decodeItem(file, *catalog, id, *item, Role::Main, maxPixel) : QImage();
}
