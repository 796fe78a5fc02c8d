// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffBlockRows.h"

#include <algorithm>
#include <array>

static int blockHeight(const TiffLayout &layout)
{
    return std::min(layout.isTiled ? layout.tile.height() : layout.rowsPerStrip,
                    layout.size.height());
}

std::unique_ptr<TiffRows> TiffBlockRows::open(std::unique_ptr<TiffFile> file, TiffLayout layout,
                                              qint64 memory)
{
    // Beside the block libtiff keeps a strip or a tile of it, at three bytes a pixel or more.
    const auto pixels = qint64{layout.size.width()} * blockHeight(layout);
    const auto atOnce =
        layout.isTiled ? TIFFTileSize(file->handle()) : TIFFStripSize(file->handle());
    if (atOnce <= 0 || atOnce > memory / 2 || 4 * pixels + atOnce > memory / 2) {
        return nullptr;
    }
    auto rows =
        std::unique_ptr<TiffBlockRows>(new TiffBlockRows(std::move(file), std::move(layout)));
    return rows->m_canConvert ? std::move(rows) : nullptr;
}

TiffBlockRows::TiffBlockRows(std::unique_ptr<TiffFile> file, TiffLayout layout)
    : TiffRows(std::move(layout))
    , m_file(std::move(file))
    , m_blockHeight(blockHeight(this->layout()))
{
    std::array<char, 1024> message = {}; // as long as libtiff demands it
    m_canConvert = TIFFRGBAImageOK(m_file->handle(), message.data()) != 0 &&
                   TIFFRGBAImageBegin(&m_converter, m_file->handle(), 0, message.data()) != 0;
    if (m_canConvert) {
        m_converter.req_orientation = m_converter.orientation; // turned later, once
        m_block.resize(size_t(size().width()) * size_t(m_blockHeight));
    }
}

TiffBlockRows::~TiffBlockRows()
{
    if (m_canConvert) {
        TIFFRGBAImageEnd(&m_converter);
    }
}

bool TiffBlockRows::read(int row, QRgb *pixels)
{
    const int top = row - row % m_blockHeight;
    if (top != m_blockTop) {
        std::ranges::fill(m_block, 0U);
        m_converter.row_offset = top;
        m_blockIsSound =
            TIFFRGBAImageGet(&m_converter, m_block.data(), uint32_t(size().width()),
                             uint32_t(std::min(m_blockHeight, size().height() - top))) != 0;
        m_blockTop = top;
    }
    const auto *source = m_block.data() + qint64{row - top} * size().width();
    std::transform(source, source + size().width(), pixels, [](uint32_t pixel) {
        return qRgb(int(TIFFGetR(pixel)), int(TIFFGetG(pixel)), int(TIFFGetB(pixel)));
    });
    return m_blockIsSound;
}
