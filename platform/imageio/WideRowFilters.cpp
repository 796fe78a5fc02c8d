// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/RowFilters.h"

#if defined(__x86_64__) && defined(__GNUC__)

#include <immintrin.h>

// Only these functions may use what not every processor of the family has.
#define KESTLE_WIDE [[gnu::target("avx2,fma")]]
#define KESTLE_WIDE_INLINE [[gnu::target("avx2,fma"), gnu::always_inline]] inline

namespace {

constexpr size_t channels = 4;
/// Two pixels of four channels.
constexpr size_t lanes = 8;

KESTLE_WIDE void widen(const QRgb *pixels, float *target, size_t count)
{
    size_t column = 0;
    for (; column + 2 <= count; column += 2) {
        const auto bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i *>(pixels + column));
        _mm256_storeu_ps(target + column * channels,
                         _mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(bytes)));
    }
    if (column < count) {
        const auto bytes = _mm_cvtsi32_si128(static_cast<int>(pixels[column]));
        _mm_storeu_ps(target + column * channels, _mm_cvtepi32_ps(_mm_cvtepu8_epi32(bytes)));
    }
}

/// Two neighbouring weights, each for the channels of a pixel.
KESTLE_WIDE_INLINE __m256 pairOf(const float *weights)
{
    const auto two = _mm256_broadcast_sd(reinterpret_cast<const double *>(weights));
    return _mm256_permutevar8x32_ps(_mm256_castpd_ps(two),
                                    _mm256_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1));
}

KESTLE_WIDE_INLINE void setSum(float *target, __m256 even, __m256 odd)
{
    const auto sum = _mm256_add_ps(even, odd);
    _mm_storeu_ps(target, _mm_add_ps(_mm256_castps256_ps128(sum), _mm256_extractf128_ps(sum, 1)));
}

/// With a number of @p taps that the compiler knows there is no loop within the loop.
KESTLE_WIDE_INLINE void narrowBy(size_t taps, const RowFilters::TwoRows &rows,
                                 const RowFilters::Columns &columns)
{
    const auto *weight = columns.weights.data();
    const auto count = columns.first.size();
    for (size_t column = 0; column < count; ++column, weight += taps) {
        const auto offset = static_cast<size_t>(columns.first[column]) * channels;
        const auto *upper = rows.sources[0] + offset;
        const auto *lower = rows.sources[1] + offset;
        // Two sums for each row, because each addition would wait for the one before it.
        auto upperEven = _mm256_setzero_ps();
        auto upperOdd = _mm256_setzero_ps();
        auto lowerEven = _mm256_setzero_ps();
        auto lowerOdd = _mm256_setzero_ps();
        size_t tap = 0;
#pragma GCC unroll 4
        for (; tap + 4 <= taps; tap += 4) {
            const auto even = pairOf(weight + tap);
            const auto odd = pairOf(weight + tap + 2);
            const auto at = tap * channels;
            upperEven = _mm256_fmadd_ps(even, _mm256_loadu_ps(upper + at), upperEven);
            lowerEven = _mm256_fmadd_ps(even, _mm256_loadu_ps(lower + at), lowerEven);
            upperOdd = _mm256_fmadd_ps(odd, _mm256_loadu_ps(upper + at + lanes), upperOdd);
            lowerOdd = _mm256_fmadd_ps(odd, _mm256_loadu_ps(lower + at + lanes), lowerOdd);
        }
        if (tap < taps) {
            const auto last = pairOf(weight + tap);
            upperEven = _mm256_fmadd_ps(last, _mm256_loadu_ps(upper + tap * channels), upperEven);
            lowerEven = _mm256_fmadd_ps(last, _mm256_loadu_ps(lower + tap * channels), lowerEven);
        }
        setSum(rows.targets[0] + column * channels, upperEven, upperOdd);
        setSum(rows.targets[1] + column * channels, lowerEven, lowerOdd);
    }
}

KESTLE_WIDE void narrow(const RowFilters::TwoRows &rows, const RowFilters::Columns &columns)
{
    switch (columns.taps) { // those of scales from 1 to 2.1, which pictures for the screen have
    case 8:
        return narrowBy(8, rows, columns);
    case 10:
        return narrowBy(10, rows, columns);
    case 12:
        return narrowBy(12, rows, columns);
    default:
        return narrowBy(columns.taps, rows, columns);
    }
}

KESTLE_WIDE void blend(const float *const *rows, const float *weights, size_t taps, QRgb *target,
                       size_t count)
{
    const auto opaque = _mm256_set1_epi32(static_cast<int>(0xff000000U));
    // The packing below takes its halves by turns.
    const auto inOrder = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    size_t column = 0;
    for (; column + lanes <= count; column += lanes) {
        auto first = _mm256_setzero_ps();
        auto second = _mm256_setzero_ps();
        auto third = _mm256_setzero_ps();
        auto fourth = _mm256_setzero_ps();
        for (size_t tap = 0; tap < taps; ++tap) {
            const auto weight = _mm256_set1_ps(weights[tap]);
            const auto *row = rows[tap] + column * channels;
            first = _mm256_fmadd_ps(weight, _mm256_loadu_ps(row), first);
            second = _mm256_fmadd_ps(weight, _mm256_loadu_ps(row + lanes), second);
            third = _mm256_fmadd_ps(weight, _mm256_loadu_ps(row + 2 * lanes), third);
            fourth = _mm256_fmadd_ps(weight, _mm256_loadu_ps(row + 3 * lanes), fourth);
        }
        // Rounds to the nearest; the packing keeps within 0 and 255.
        const auto words =
            _mm256_packs_epi32(_mm256_cvtps_epi32(first), _mm256_cvtps_epi32(second));
        const auto more = _mm256_packs_epi32(_mm256_cvtps_epi32(third), _mm256_cvtps_epi32(fourth));
        const auto bytes = _mm256_permutevar8x32_epi32(_mm256_packus_epi16(words, more), inOrder);
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(target + column),
                            _mm256_or_si256(bytes, opaque));
    }
    for (; column < count; ++column) {
        auto sum = _mm_setzero_ps();
        for (size_t tap = 0; tap < taps; ++tap) {
            sum = _mm_fmadd_ps(_mm_set1_ps(weights[tap]),
                               _mm_loadu_ps(rows[tap] + column * channels), sum);
        }
        const auto words = _mm_packs_epi32(_mm_cvtps_epi32(sum), _mm_setzero_si128());
        target[column] =
            0xff000000U |
            static_cast<QRgb>(_mm_cvtsi128_si32(_mm_packus_epi16(words, _mm_setzero_si128())));
    }
}

} // namespace

const RowFilters *RowFilters::wide()
{
    static constexpr RowFilters filters = {::widen, ::narrow, ::blend};
    static const bool possible = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    return possible ? &filters : nullptr;
}

#else

const RowFilters *RowFilters::wide()
{
    return nullptr;
}

#endif
