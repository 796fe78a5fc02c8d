// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffTileRows.h"

#include "platform/imageio/TiffSamples.h"

#include <algorithm>

std::unique_ptr<TiffRows> TiffTileRows::open(std::unique_ptr<TiffFile> file, TiffLayout layout,
                                             qint64 memory, TiffColors::Floating floating)
{
    const auto tileSize = TIFFTileSize(file->handle()); // 0 where it would be too large
    const auto planes = qint64(TiffColors::planes(layout).size());
    const auto expected =
        TiffSamples::rowLength(layout, layout.tile.width()) * layout.tile.height();
    const auto bandPixels =
        qint64{layout.size.width()} * std::min(layout.tile.height(), layout.size.height());
    if (tileSize <= 0 || tileSize < expected || tileSize > memory / 2 ||
        tileSize * planes + 4 * bandPixels > memory / 2) {
        return nullptr;
    }
    return std::unique_ptr<TiffRows>(
        new TiffTileRows(std::move(file), std::move(layout), floating));
}

TiffTileRows::TiffTileRows(std::unique_ptr<TiffFile> file, TiffLayout layout,
                           TiffColors::Floating floating)
    : TiffRows(std::move(layout))
    , m_file(std::move(file))
    , m_planes(TiffColors::planes(this->layout()))
    , m_colors(this->layout(), this->layout().tile.width(), floating)
    , m_tiles(m_planes.size(), std::vector<uchar>(size_t(TIFFTileSize(m_file->handle()))))
    , m_band(size_t(size().width()) *
             size_t(std::min(this->layout().tile.height(), size().height())))
{
}

bool TiffTileRows::readTile(int left, int top)
{
    for (size_t plane = 0; plane < m_planes.size(); ++plane) {
        if (TIFFReadTile(m_file->handle(), m_tiles[plane].data(), uint32_t(left), uint32_t(top), 0,
                         static_cast<uint16_t>(m_planes[plane])) < 0) {
            return false;
        }
    }
    return true;
}

void TiffTileRows::readBand(int top)
{
    const auto tile = layout().tile;
    const int rows = std::min(tile.height(), size().height() - top);
    const auto rowLength = TiffSamples::rowLength(layout(), tile.width());
    std::vector<const uchar *> starts(m_tiles.size());
    std::ranges::fill(m_band, qRgb(0, 0, 0));
    m_bandTop = top;
    m_bandIsSound = false;
    for (int left = 0; left < size().width(); left += tile.width()) {
        if (!readTile(left, top)) {
            continue;
        }
        m_bandIsSound = true;
        const int columns = std::min(tile.width(), size().width() - left);
        for (int row = 0; row < rows; ++row) {
            for (size_t plane = 0; plane < m_tiles.size(); ++plane) {
                starts[plane] = m_tiles[plane].data() + row * rowLength;
            }
            m_colors.convert(starts, columns, m_band.data() + qint64{row} * size().width() + left);
        }
    }
}

bool TiffTileRows::read(int row, QRgb *pixels)
{
    const int top = row - row % layout().tile.height();
    if (top != m_bandTop) {
        readBand(top);
    }
    std::copy_n(m_band.data() + qint64{row - top} * size().width(), size().width(), pixels);
    return m_bandIsSound;
}
