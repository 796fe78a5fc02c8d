// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffStripRows.h"

#include "platform/imageio/TiffSamples.h"

#include <algorithm>

std::unique_ptr<TiffRows> TiffStripRows::open(Files files, TiffLayout layout, qint64 memory,
                                              TiffColors::Floating floating)
{
    const auto length = TiffSamples::rowLength(layout, layout.size.width());
    const auto planes = qint64(files.size());
    // A row of libtiff's, and the numbers of it.
    const auto needed = (length + qint64{2} * layout.size.width()) * planes;
    for (const auto &file : files) {
        if (needed > memory / 2 || TIFFScanlineSize(file->handle()) < length) {
            return nullptr;
        }
    }
    return std::unique_ptr<TiffRows>(
        new TiffStripRows(std::move(files), std::move(layout), floating));
}

TiffStripRows::TiffStripRows(Files files, TiffLayout layout, TiffColors::Floating floating)
    : TiffRows(std::move(layout))
    , m_files(std::move(files))
    , m_planes(TiffColors::planes(this->layout()))
    , m_colors(this->layout(), size().width(), floating)
{
    for (const auto &file : m_files) {
        m_rows.emplace_back(size_t(TIFFScanlineSize(file->handle())));
        m_rowStarts.push_back(m_rows.back().data());
    }
}

bool TiffStripRows::read(int row, QRgb *pixels)
{
    bool isSound = row >= m_nextSound;
    for (size_t plane = 0; isSound && plane < m_planes.size(); ++plane) {
        isSound = TIFFReadScanline(m_files[plane]->handle(), m_rows[plane].data(), uint32_t(row),
                                   static_cast<uint16_t>(m_planes[plane])) >= 0;
        if (!isSound) {
            m_nextSound = (row / layout().rowsPerStrip + 1) * layout().rowsPerStrip;
        }
    }
    if (!isSound) {
        std::fill_n(pixels, size().width(), qRgb(0, 0, 0));
        return false;
    }
    m_colors.convert(m_rowStarts, size().width(), pixels);
    return true;
}
