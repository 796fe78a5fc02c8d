// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffRows.h"

#include "platform/imageio/TiffBlockRows.h"
#include "platform/imageio/TiffStripRows.h"
#include "platform/imageio/TiffTileRows.h"

/// Of what libtiff decodes in all, so that no small file keeps a thread busy for minutes.
constexpr qint64 mostBytes = qint64{2} * 1024 * 1024 * 1024;
constexpr qint64 mostTiles = 1'000'000;

static bool isBounded(const TiffLayout &layout)
{
    const auto columns = qint64{layout.size.width()};
    const auto rows = qint64{layout.size.height()};
    const auto pixelBits = qint64{layout.samples} * layout.bits;
    if (!layout.isTiled) {
        return columns * rows <= mostBytes * 8 / pixelBits;
    }
    const auto up = [](qint64 edge, qint64 tile) { return (edge + tile - 1) / tile; };
    const auto tiles = up(columns, layout.tile.width()) * up(rows, layout.tile.height());
    const auto tilePixels = qint64{layout.tile.width()} * layout.tile.height();
    return tiles <= mostTiles && tilePixels <= mostBytes * 8 / pixelBits / tiles;
}

std::unique_ptr<TiffRows> TiffRows::open(const InputFile &file, qint64 directory, qint64 memory,
                                         TiffColors::Floating floating)
{
    // A strip or tile may be in memory twice, as stored and decoded.
    const auto mostAtOnce = memory / 2;
    auto tiff = TiffFile::open(file, directory, mostAtOnce);
    auto layout = tiff ? TiffLayout::read(*tiff) : std::nullopt;
    if (!layout || !isBounded(*layout)) {
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
