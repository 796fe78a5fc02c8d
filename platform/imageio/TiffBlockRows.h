// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/TiffRows.h"

#include <vector>

/// Rows that libtiff converts to RGB, a strip or a row of tiles at a time.
class TiffBlockRows final : public TiffRows {
public:
    [[nodiscard]] static std::unique_ptr<TiffRows> open(std::unique_ptr<TiffFile> file,
                                                        TiffLayout layout, qint64 memory);
    ~TiffBlockRows() override;

    [[nodiscard]] bool read(int row, QRgb *pixels) override;

private:
    TiffBlockRows(std::unique_ptr<TiffFile> file, TiffLayout layout);

    std::unique_ptr<TiffFile> m_file;
    TIFFRGBAImage m_converter = {};
    bool m_canConvert = false;
    int m_blockHeight;
    std::vector<uint32_t> m_block;
    int m_blockTop = -1;
    bool m_blockIsSound = false;
};
