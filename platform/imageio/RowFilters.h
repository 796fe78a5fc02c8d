// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QRgb>

#include <cstddef>
#include <vector>

/// The three steps of scaling a row, where nearly all the time of scaling goes: in plain code, and
/// for processors that can do twice as much at once. Their results differ by rounding only.
///
/// Rows of floats hold four a pixel, in the order of the bytes of a QRgb in memory.
struct RowFilters {
    /// For each target pixel of a row the first source pixel that counts, and how much it and
    /// those behind it count. All have the same even number of weights, the last ones may be 0.
    struct Columns {
        std::vector<int> first;
        std::vector<float> weights;
        size_t taps = 0;
    };

    /// Bytes to floats.
    void (*widen)(const QRgb *pixels, float *target, size_t count);

    /// The weighted sums of two rows at a time, so that each weight is fetched once for both. The
    /// sources must be readable for all the weights.
    struct TwoRows {
        const float *sources[2];
        float *targets[2];
    };
    void (*narrow)(const TwoRows &rows, const Columns &columns);

    /// The weighted sum of @p taps rows as opaque pixels, rounded and within 0 to 255.
    void (*blend)(const float *const *rows, const float *weights, size_t taps, QRgb *target,
                  size_t count);

    [[nodiscard]] static const RowFilters &plain();
    /// Null where the processor cannot, or the compiler.
    [[nodiscard]] static const RowFilters *wide();
    [[nodiscard]] static const RowFilters &best();
};
