// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/UprightPicture.h"

#include <QSize>

#include <vector>

/// Scales a picture down by the Lanczos filter of three lobes while its rows come in, top to
/// bottom; needs the memory of some rows only. Works on the coded values, as viewers do. For one
/// thread.
class Resampler {
public:
    /// @p target is at most @p source in both directions, both at least one pixel.
    Resampler(QSize source, QSize target, UprightPicture &picture);

    /// The next row of the source. The target's rows go to the picture as they are finished.
    void addRow(const QRgb *pixels);

private:
    /// Four channels at once.
    using Pixel = float __attribute__((vector_size(16)));

    /// The source pixels that make one target pixel, and what each counts.
    struct Taps {
        int first = 0;
        std::vector<float> weights;
    };

    static std::vector<Taps> taps(int source, int target);

    void widen(const QRgb *pixels);
    void narrowRow();
    void emitRow(std::vector<Pixel> &sum);
    [[nodiscard]] std::vector<Pixel> &sumOf(int targetRow);

    QSize m_source;
    QSize m_target;
    UprightPicture &m_picture;
    std::vector<Taps> m_columns;
    std::vector<Taps> m_rows;
    std::vector<Pixel> m_wide;
    std::vector<Pixel> m_narrow;
    /// Sums of the target rows that are being made, by row number modulo their count.
    std::vector<std::vector<Pixel>> m_sums;
    std::vector<QRgb> m_output;
    int m_row = 0;
    int m_firstOpen = 0;
};
