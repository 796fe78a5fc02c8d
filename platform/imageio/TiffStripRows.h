// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/TiffRows.h"

#include <vector>

/// Rows stored in strips. Of a strip no more is decoded than the row that is wanted.
class TiffStripRows final : public TiffRows {
public:
    /// One for each plane: libtiff keeps its place in one strip only.
    using Files = std::vector<std::unique_ptr<TiffFile>>;

    [[nodiscard]] static std::unique_ptr<TiffRows>
    open(Files files, TiffLayout layout, qint64 memory, TiffColors::Floating floating);

    [[nodiscard]] bool read(int row, QRgb *pixels) override;

private:
    TiffStripRows(Files files, TiffLayout layout, TiffColors::Floating floating);

    Files m_files;
    std::vector<int> m_planes;
    TiffColors m_colors;
    std::vector<std::vector<uchar>> m_rows;
    std::vector<const uchar *> m_rowStarts;
    /// The first row of the strip behind a damaged one: asking for each of its rows would read the
    /// whole strip again and again.
    int m_nextSound = 0;
};
