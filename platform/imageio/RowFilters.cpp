// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/RowFilters.h"

#include <algorithm>
#include <cstring>

namespace {

/// Four channels at once.
using Pixel = float __attribute__((vector_size(16)));
constexpr size_t channels = 4;

Pixel pixelAt(const float *row, size_t column)
{
    Pixel pixel;
    std::memcpy(&pixel, row + column * channels, sizeof(pixel));
    return pixel;
}

void setPixel(float *row, size_t column, Pixel pixel)
{
    std::memcpy(row + column * channels, &pixel, sizeof(pixel));
}

QRgb rounded(Pixel pixel)
{
    const auto value = [&](int channel) {
        return static_cast<quint32>(std::clamp(pixel[channel] + 0.5F, 0.0F, 255.0F));
    };
    // The channels lie in memory as those of QRgb on a little-endian machine.
    return 0xff000000U | value(2) << 16 | value(1) << 8 | value(0);
}

void widen(const QRgb *pixels, float *target, size_t count)
{
    using Bytes = quint8 __attribute__((vector_size(4)));
    for (size_t column = 0; column < count; ++column) {
        Bytes bytes;
        std::memcpy(&bytes, pixels + column, sizeof(bytes));
        setPixel(target, column, __builtin_convertvector(bytes, Pixel));
    }
}

void narrow(const RowFilters::TwoRows &rows, const RowFilters::Columns &columns)
{
    const auto *weight = columns.weights.data();
    for (size_t column = 0; column < columns.first.size(); ++column, weight += columns.taps) {
        const auto first = static_cast<size_t>(columns.first[column]);
        Pixel sums[2] = {};
        for (size_t tap = 0; tap < columns.taps; ++tap) {
            sums[0] += pixelAt(rows.sources[0], first + tap) * weight[tap];
            sums[1] += pixelAt(rows.sources[1], first + tap) * weight[tap];
        }
        setPixel(rows.targets[0], column, sums[0]);
        setPixel(rows.targets[1], column, sums[1]);
    }
}

void blend(const float *const *rows, const float *weights, size_t taps, QRgb *target, size_t count)
{
    for (size_t column = 0; column < count; ++column) {
        Pixel sum = {};
        for (size_t tap = 0; tap < taps; ++tap) {
            sum += pixelAt(rows[tap], column) * weights[tap];
        }
        target[column] = rounded(sum);
    }
}

} // namespace

const RowFilters &RowFilters::plain()
{
    static constexpr RowFilters filters = {::widen, ::narrow, ::blend};
    return filters;
}

const RowFilters &RowFilters::best()
{
    const auto *const filters = wide();
    return filters ? *filters : plain();
}
