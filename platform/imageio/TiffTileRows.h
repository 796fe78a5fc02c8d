// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/TiffRows.h"

#include <vector>

/// Rows stored in tiles. One row of tiles is in memory.
class TiffTileRows final : public TiffRows {
public:
    [[nodiscard]] static std::unique_ptr<TiffRows> open(std::unique_ptr<TiffFile> file,
                                                        TiffLayout layout, qint64 memory,
                                                        TiffColors::Floating floating);

    [[nodiscard]] bool read(int row, QRgb *pixels) override;

private:
    TiffTileRows(std::unique_ptr<TiffFile> file, TiffLayout layout, TiffColors::Floating floating);

    void readBand(int top);
    [[nodiscard]] bool readTile(int left, int top);

    std::unique_ptr<TiffFile> m_file;
    std::vector<int> m_planes;
    TiffColors m_colors;
    /// One tile of each plane.
    std::vector<std::vector<uchar>> m_tiles;
    std::vector<QRgb> m_band;
    int m_bandTop = -1;
    bool m_bandIsSound = false;
};
