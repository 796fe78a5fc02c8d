// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/hevc/HevcPicture.h"
#include "platform/imageio/ToneCurve.h"

#include <QRgb>

#include <array>
#include <vector>

/// Makes rows of red, green and blue out of the planes of a picture (ITU-T H.273, 8.3). Smaller
/// planes are widened along straight lines between their samples, which lie at the left of a pair
/// of columns and between a pair of rows (H.265, figure E.1, type 0). For one thread.
class PlaneConverter {
public:
    /// Colours are @p color's: still in its primaries, and in its transfer characteristic, unless
    /// ToneCurve knows it: then in sRGB's.
    PlaneConverter(HevcPicture picture, const CodedColor &color);

    [[nodiscard]] QSize size() const { return m_picture.size(); }

    /// Fills @p pixels with a whole row.
    void convert(int row, QRgb *pixels);

private:
    using Samples = std::vector<float>;
    /// What a sample of each plane adds to one colour, and what is added to their sum.
    struct Mix {
        std::array<float, 3> weights = {};
        float offset = 0;
    };

    void prepare(const CodedColor &color);
    void readChroma(int plane, int row);
    void readRow(const HevcPicture::Plane &plane, int row, Samples &samples) const;
    template<typename Store>
    void mixRow(int top, Store store) const;

    HevcPicture m_picture;
    const ToneCurve::Table *m_curve;
    std::array<Mix, 3> m_mixes;
    /// Of each plane one row, as wide as the picture and up to three samples more.
    std::array<Samples, 3> m_samples;
    Samples m_nearer;
    Samples m_farther;
};
