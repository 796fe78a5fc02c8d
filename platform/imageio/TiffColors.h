// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/TiffLayout.h"

#include <QRgb>

#include <vector>

/// Turns the samples of a TIFF image into colours. Printing colours and Lab plainly, without a
/// profile; transparent places become darker, for the screen behind pictures is black. For one
/// thread.
class TiffColors {
public:
    /// What floating-point numbers say: an amount of light, or, in a picture with a colour profile,
    /// a code.
    enum class Floating { Light, Code };

    /// For rows of at most @p width pixels. @p layout must outlive this.
    TiffColors(const TiffLayout &layout, int width, Floating floating);

    /// The samples that @p rows hold, libtiff's rows of the samples or of the planes, for @p count
    /// pixels.
    void convert(const std::vector<const uchar *> &rows, int count, QRgb *pixels);

    /// The planes that are needed: the samples' numbers, or just 0 when all are in one.
    [[nodiscard]] static std::vector<int> planes(const TiffLayout &layout);

private:
    using Values = std::vector<quint16>;

    void convertLab(int count, QRgb *pixels);
    void applyAlpha(int count, QRgb *pixels);

    const TiffLayout &m_layout;
    Floating m_floating;
    /// The colours' samples, the alpha behind them.
    std::vector<Values> m_values;
};
