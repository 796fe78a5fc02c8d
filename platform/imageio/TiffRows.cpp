// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffRows.h"

#include "platform/imageio/TiffBlockRows.h"
#include "platform/imageio/TiffStripRows.h"
#include "platform/imageio/TiffTileRows.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace {

/// Of what libtiff decodes in all, so that no file keeps a thread busy for minutes.
constexpr qint64 mostBytes = qint64{2} * 1024 * 1024 * 1024;
/// A picture of more than this must be worth it: be stored in no less than a part of its size,
/// which photographs are by far.
constexpr qint64 mostBytesForFree = qint64{400} * 1024 * 1024;
constexpr qint64 mostFromOneByte = 64;
/// What a pixel costs at least, in bytes, as one is made of however few bits.
constexpr qint64 leastPixelBits = 32;
constexpr qint64 mostTiles = 1'000'000;
/// Strips of one row in planes, of the longest edge there is.
constexpr uint32_t mostStretches = 8'000'000;

/// What libtiff decodes in all, nothing for more than the most.
std::optional<qint64> decodedBytes(const TiffLayout &layout)
{
    const auto columns = qint64{layout.size.width()};
    const auto rows = qint64{layout.size.height()};
    const auto pixelBits = std::max(leastPixelBits, qint64{layout.samples} * layout.bits);
    const auto mostPixels = mostBytes * 8 / pixelBits;
    auto pixels = columns * rows;
    if (layout.isTiled) {
        const auto up = [](qint64 edge, qint64 tile) { return (edge + tile - 1) / tile; };
        const auto tiles = up(columns, layout.tile.width()) * up(rows, layout.tile.height());
        const auto tilePixels = qint64{layout.tile.width()} * layout.tile.height();
        if (tiles > mostTiles || tilePixels > mostPixels / tiles) {
            return std::nullopt;
        }
        pixels = tiles * tilePixels;
    }
    return pixels <= mostPixels ? std::optional(pixels * pixelBits / 8) : std::nullopt;
}

/// How much of the file the strips or tiles fill, which may all claim the same stretch of it.
qint64 storedBytes(const InputFile &file, const TiffFile &tiff)
{
    auto *const handle = tiff.handle();
    const auto size = static_cast<quint64>(file.size());
    uint16_t compression = COMPRESSION_NONE;
    (void)TIFFGetFieldDefaulted(handle, TIFFTAG_COMPRESSION, &compression);
    if (compression == COMPRESSION_OJPEG) {
        return file.size(); // its stream may be named by tags of its own
    }
    const auto count =
        TIFFIsTiled(handle) != 0 ? TIFFNumberOfTiles(handle) : TIFFNumberOfStrips(handle);
    if (count > mostStretches) {
        return 0;
    }
    std::vector<std::pair<quint64, quint64>> stretches; // begin, end
    for (uint32_t index = 0; index < count; ++index) {
        const auto begin = quint64{TIFFGetStrileOffset(handle, index)};
        if (begin < size) {
            const auto length = quint64{TIFFGetStrileByteCount(handle, index)};
            stretches.emplace_back(begin, begin + std::min(length, size - begin));
        }
    }
    std::ranges::sort(stretches);
    quint64 sum = 0;
    quint64 reached = 0;
    for (const auto &[begin, end] : stretches) {
        if (end > reached) {
            sum += end - std::max(begin, reached);
            reached = end;
        }
    }
    return static_cast<qint64>(sum);
}

bool isBounded(const TiffLayout &layout, const InputFile &file, const TiffFile &tiff)
{
    const auto decoded = decodedBytes(layout);
    return decoded &&
           (*decoded <= mostBytesForFree || *decoded / mostFromOneByte <= storedBytes(file, tiff));
}

} // namespace

std::unique_ptr<TiffRows> TiffRows::open(const InputFile &file, qint64 directory, qint64 memory,
                                         TiffColors::Floating floating)
{
    // A strip or tile may be in memory twice, as stored and decoded.
    const auto mostAtOnce = memory / 2;
    auto tiff = TiffFile::open(file, directory, mostAtOnce);
    auto layout = tiff ? TiffLayout::read(*tiff) : std::nullopt;
    if (!layout || !isBounded(*layout, file, *tiff)) {
        return nullptr;
    }
    if (layout->colors == TiffLayout::Colors::Converted) {
        return TiffBlockRows::open(std::move(tiff), std::move(*layout), memory);
    }
    if (layout->isTiled) {
        return TiffTileRows::open(std::move(tiff), std::move(*layout), memory, floating);
    }
    TiffStripRows::Files files;
    files.push_back(std::move(tiff));
    const auto planes = TiffColors::planes(*layout).size();
    while (files.size() < planes) {
        files.push_back(TiffFile::open(file, directory, mostAtOnce / qint64(planes)));
        if (!files.back()) {
            return nullptr;
        }
    }
    return TiffStripRows::open(std::move(files), std::move(*layout), memory, floating);
}
