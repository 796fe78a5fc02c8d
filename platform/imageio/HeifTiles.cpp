// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/HeifTiles.h"

#include <QThread>

#include <algorithm>
#include <new>
#include <system_error>
#include <utility>

namespace {

/// Decodes are queued on all cores already: this is for the one picture that somebody waits for.
constexpr int mostThreads = 4;
/// Codecs work in blocks of as many pixels.
constexpr int largestBlock = 64;
constexpr QRgb grey = qRgb(128, 128, 128);
/// One coded tile; a whole picture of 100 megapixels has some 60 MiB.
constexpr qint64 largestTile = 128 * 1024 * 1024;

std::optional<HevcPicture> decodeTile(const InputFile &file, const HeifItem &item, qint64 memory,
                                      qint64 mostPixels)
{
    qint64 length = 0;
    for (const auto &extent : item.extents) {
        length += extent.length;
    }
    if (length > std::min(largestTile, memory)) {
        return std::nullopt;
    }
    QByteArray data;
    data.reserve(length);
    for (const auto &extent : item.extents) {
        data += file.bytes(extent.offset, extent.length);
    }
    return HevcPicture::decode(item.configuration, data, memory, mostPixels);
}

/// The part of the decoded tile that counts: codecs fill up to whole blocks, and some cameras to a
/// square. Not every writer says so in the stream.
QSize trueSize(QSize said, QSize decoded)
{
    const auto filling = decoded - said;
    if (said.isEmpty() || filling.width() < 0 || filling.height() < 0) {
        return decoded;
    }
    const bool isOfBlocks = filling.width() < largestBlock && filling.height() < largestBlock;
    const auto pixels = [](QSize size) { return qint64{size.width()} * size.height(); };
    return isOfBlocks || pixels(decoded) <= 2 * pixels(said) ? said : decoded;
}

} // namespace

HeifTiles::HeifTiles(const InputFile &file, QList<HeifItem> tiles, qint64 memory)
    : m_file(file)
    , m_items(std::move(tiles))
    , m_memory(memory)
{
}

std::unique_ptr<HeifTiles> HeifTiles::open(const InputFile &file, QList<HeifItem> tiles,
                                           const Layout &layout, std::optional<CodedColor> color,
                                           qint64 memory)
{
    if (layout.columns < 1 || layout.rows < 1 ||
        tiles.size() < qsizetype{layout.columns} * layout.rows) {
        return nullptr;
    }
    std::unique_ptr<HeifTiles> result(new HeifTiles(file, std::move(tiles), memory));
    return result->begin(layout, color) ? std::move(result) : nullptr;
}

bool HeifTiles::begin(const Layout &layout, std::optional<CodedColor> color)
{
    m_layout = layout;
    m_items.resize(qsizetype{layout.columns} * layout.rows);
    m_threads = static_cast<int>(std::clamp<qsizetype>(
        std::min<qsizetype>(QThread::idealThreadCount(), m_items.size()), 1, mostThreads));
    m_memory /= m_items.size() > 1 ? layout.columns + m_threads : 1;
    m_mostPixels = mostPixels();
    auto tiles = takeTiles();
    const auto first = std::ranges::find_if(tiles, &Tile::has_value);
    if (first == tiles.end()) {
        return false;
    }
    const auto said = color ? color : m_items.at(first - tiles.begin()).color;
    m_color = said.value_or((*first)->color());
    m_layout.tile = trueSize(layout.tile, (*first)->size());
    auto &[columns, rows, tile, picture] = m_layout;
    if (picture.isEmpty()) {
        picture = tile;
    }
    const auto fills = [](qint64 count, qint64 edge, qint64 whole) {
        return count * edge >= whole && (count - 1) * edge < whole;
    };
    if (!fills(columns, tile.width(), picture.width()) ||
        !fills(rows, tile.height(), picture.height())) {
        return false;
    }
    showTiles(std::move(tiles));
    return true;
}

/// Of one tile, whatever it is filled up to.
qint64 HeifTiles::mostPixels() const
{
    // Where the file does not say, a tile is less than the picture without the last column or row.
    const auto edge = [](int said, int whole, int count) {
        return qint64{said > 0 ? said : whole / std::max(count - 1, 1) + 1};
    };
    const auto width = edge(m_layout.tile.width(), m_layout.picture.width(), m_layout.columns);
    const auto height = edge(m_layout.tile.height(), m_layout.picture.height(), m_layout.rows);
    // The decoder counts whole blocks, and lines as long as its arithmetic likes them.
    constexpr int filling = 2 * largestBlock;
    return std::max(2 * width * height, (width + filling) * (height + filling));
}

std::future<HeifTiles::Tile> HeifTiles::start(const HeifItem &item) const
{
    const auto work = [this, item] { return decodeTile(m_file, item, m_memory, m_mostPixels); };
    if (m_threads > 1) {
        try {
            return std::async(std::launch::async, work);
        } catch (const std::system_error &) {
            // There are no further threads: this one will do it.
        }
    }
    return std::async(std::launch::deferred, work);
}

HeifTiles::Tile HeifTiles::takeTile()
{
    while (m_started < m_items.size() && m_running.size() < static_cast<size_t>(m_threads)) {
        m_running.push_back(start(m_items.at(m_started++)));
    }
    auto tile = std::move(m_running.front());
    m_running.pop_front();
    try {
        return tile.get();
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

std::vector<HeifTiles::Tile> HeifTiles::takeTiles()
{
    m_row.clear();
    std::vector<Tile> tiles;
    for (int column = 0; column < m_layout.columns; ++column) {
        tiles.push_back(takeTile());
    }
    return tiles;
}

void HeifTiles::showTiles(std::vector<Tile> tiles)
{
    for (auto &tile : tiles) {
        auto &place = m_row.emplace_back();
        if (tile) {
            place.emplace(std::move(*tile), m_color);
        }
    }
}

bool HeifTiles::readRow(QRgb *pixels)
{
    const auto &[columns, rows, tile, picture] = m_layout;
    if (m_nextRow >= picture.height()) {
        return false;
    }
    const int row = m_nextRow % tile.height();
    if (row == 0 && m_nextRow > 0) {
        showTiles(takeTiles());
    }
    ++m_nextRow;
    std::fill_n(pixels, picture.width(), grey);
    for (int column = 0; column < columns; ++column) {
        auto &converter = m_row.at(static_cast<size_t>(column));
        if (!converter || row >= converter->size().height()) {
            continue;
        }
        const int from = column * tile.width();
        const int count =
            std::min({tile.width(), converter->size().width(), picture.width() - from});
        m_pixels.resize(static_cast<size_t>(converter->size().width()));
        converter->convert(row, m_pixels.data());
        std::copy_n(m_pixels.begin(), count, pixels + from);
    }
    return true;
}
