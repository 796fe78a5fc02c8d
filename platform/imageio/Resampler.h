// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/RowFilters.h"
#include "platform/imageio/UprightPicture.h"

#include <QSize>

#include <vector>

/// Scales a picture down by the Lanczos filter of three lobes while its rows come in, top to
/// bottom; needs the memory of some rows only. Works on the coded values, as viewers do. For one
/// thread.
class Resampler {
public:
    /// @p target is at most @p source in both directions, both at least one pixel.
    Resampler(QSize source, QSize target, UprightPicture &picture,
              const RowFilters &filters = RowFilters::best());

    /// The next row of the source. The target's rows go to the picture as they are finished.
    void addRow(const QRgb *pixels);

private:
    [[nodiscard]] float *wideRow(int sourceRow);
    [[nodiscard]] float *narrowRow(int sourceRow);
    void narrowWaitingRows();
    void emitRow(size_t targetRow);

    QSize m_source;
    QSize m_target;
    UprightPicture &m_picture;
    const RowFilters &m_filters;
    RowFilters::Columns m_columns;
    RowFilters::Columns m_rows;
    /// Two rows of the source.
    std::vector<float> m_wide;
    /// The source rows that the next target row is made of, already of the target's width, by row
    /// number modulo their count; and one that nobody wants.
    std::vector<float> m_narrow;
    std::vector<const float *> m_blended;
    int m_row = 0;
    int m_narrowedRows = 0;
    int m_nextTarget = 0;
};
