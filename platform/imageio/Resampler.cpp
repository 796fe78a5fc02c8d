// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/Resampler.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double lobes = 3;
constexpr size_t channels = 4;

/// sin(3a) is a polynomial of sin(a), so that one sine does for both factors.
double lanczos(double x)
{
    if (x == 0) {
        return 1;
    }
    if (std::abs(x) >= lobes) {
        return 0;
    }
    const double angle = std::numbers::pi * x / lobes;
    const double sine = std::sin(angle);
    return sine * (3 - 4 * sine * sine) * sine / (lobes * angle * angle);
}

/// The source pixels or rows that make each target one, and what each counts.
RowFilters::Columns taps(int source, int target)
{
    const double scale = static_cast<double>(source) / target; // at least 1
    const double reach = lobes * scale;
    RowFilters::Columns result;
    // Two reaches never hold more, and the wide steps want an even number.
    result.taps =
        static_cast<size_t>(std::min(source, static_cast<int>(2 * reach) + 1) + 1) & ~size_t{1};
    result.first.resize(static_cast<size_t>(target));
    result.weights.resize(static_cast<size_t>(target) * result.taps);
    std::vector<double> weights;
    for (int index = 0; index < target; ++index) {
        const double centre = (index + 0.5) * scale - 0.5;
        const int first = std::max(0, static_cast<int>(std::ceil(centre - reach)));
        const int last = std::min(source - 1, static_cast<int>(std::floor(centre + reach)));
        weights.clear();
        double sum = 0;
        for (int at = first; at <= last; ++at) {
            weights.push_back(lanczos((at - centre) / scale));
            sum += weights.back();
        }
        result.first[static_cast<size_t>(index)] = first;
        auto place = result.weights.begin() + static_cast<std::ptrdiff_t>(result.taps) * index;
        for (const auto weight : weights) {
            *place++ = static_cast<float>(weight / sum);
        }
    }
    return result;
}

} // namespace

Resampler::Resampler(QSize source, QSize target, UprightPicture &picture, const RowFilters &filters)
    : m_source(source)
    , m_target(target)
    , m_picture(picture)
    , m_filters(filters)
    , m_columns(taps(source.width(), target.width()))
    , m_rows(taps(source.height(), target.height()))
    // Weights of 0 may stand for pixels behind the last one.
    , m_wide((static_cast<size_t>(source.width()) + m_columns.taps) * channels * 2)
    , m_narrow((m_rows.taps + 2) * static_cast<size_t>(target.width()) * channels)
    , m_blended(m_rows.taps)
{
}

float *Resampler::wideRow(int sourceRow)
{
    return m_wide.data() + static_cast<size_t>(sourceRow & 1) * m_wide.size() / 2;
}

float *Resampler::narrowRow(int sourceRow)
{
    // One more than a target row needs: the second of two narrowed at once may be its next.
    const auto place = static_cast<size_t>(sourceRow) % (m_rows.taps + 1);
    return m_narrow.data() + place * static_cast<size_t>(m_target.width()) * channels;
}

void Resampler::emitRow(size_t targetRow)
{
    const int first = m_rows.first[targetRow];
    for (size_t tap = 0; tap < m_rows.taps; ++tap) {
        m_blended[tap] = narrowRow(first + static_cast<int>(tap));
    }
    m_filters.blend(m_blended.data(), m_rows.weights.data() + targetRow * m_rows.taps, m_rows.taps,
                    m_picture.nextRow(), static_cast<size_t>(m_target.width()));
    m_picture.rowWritten();
}

/// One or two; where it is one, the other is narrowed for nobody.
void Resampler::narrowWaitingRows()
{
    const auto nobody =
        m_narrow.data() + m_narrow.size() - static_cast<size_t>(m_target.width()) * channels;
    const bool two = m_row - m_narrowedRows == 2;
    m_filters.narrow({{wideRow(m_narrowedRows), wideRow(m_narrowedRows + 1)},
                      {narrowRow(m_narrowedRows), two ? narrowRow(m_narrowedRows + 1) : nobody}},
                     m_columns);
    m_narrowedRows = m_row;
}

void Resampler::addRow(const QRgb *pixels)
{
    if (m_row >= m_source.height()) {
        return;
    }
    m_filters.widen(pixels, wideRow(m_row), static_cast<size_t>(m_source.width()));
    ++m_row;
    if (m_row - m_narrowedRows < 2 && m_row < m_source.height()) {
        return;
    }
    narrowWaitingRows();
    while (m_nextTarget < m_target.height()) {
        const auto next = static_cast<size_t>(m_nextTarget);
        const auto end =
            std::min(m_rows.first[next] + static_cast<int>(m_rows.taps), m_source.height());
        if (end > m_row) {
            break;
        }
        emitRow(next);
        ++m_nextTarget;
    }
}
