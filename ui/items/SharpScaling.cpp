// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/SharpScaling.h"

#include "platform/imageio/RowFilters.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr size_t channels = 4;
/// Of the filter, in pixels of the coarser of the two bitmaps.
constexpr double filterReach = 2;

/// How deep the filter's valleys are. With -1/2 pictures lose an eighth of the gradients that a
/// Lanczos filter of three lobes leaves them, with this a twentieth.
constexpr double depth = -0.7;

/// R. Keys, Cubic convolution interpolation for digital image processing, 1981.
double cubic(double x)
{
    x = std::abs(x);
    if (x < 1) {
        return 1 + x * x * ((depth + 2) * x - (depth + 3));
    }
    return x < 2 ? depth * (x - 1) * (x - 2) * (x - 2) : 0;
}

/// The source pixels or rows that make each target one, and what each counts.
RowFilters::Columns taps(int source, int target)
{
    const double step = double(source) / target;
    const double spread = std::max(1.0, step);
    const double reach = filterReach * spread;
    RowFilters::Columns result;
    // Two reaches never hold more, and the filters want an even number.
    result.taps = (size_t(2 * reach) + 2) & ~size_t{1};
    result.first.resize(size_t(target));
    result.weights.resize(size_t(target) * result.taps);
    std::vector<double> weights;
    for (int index = 0; index < target; ++index) {
        const double centre = (index + 0.5) * step - 0.5;
        const int first = std::max(0, int(std::floor(centre - reach)) + 1);
        const int last = std::min(source - 1, int(std::ceil(centre + reach)) - 1);
        weights.clear();
        double sum = 0;
        for (int at = first; at <= last; ++at) {
            weights.push_back(cubic((at - centre) / spread));
            sum += weights.back();
        }
        result.first[size_t(index)] = first;
        auto place = result.weights.begin() + std::ptrdiff_t(result.taps) * index;
        for (const auto weight : weights) {
            *place++ = float(weight / sum);
        }
    }
    return result;
}

class Scaling {
public:
    Scaling(const QImage &image, QRect source, QSize target)
        : m_image(image)
        , m_source(source)
        , m_result(target, QImage::Format_RGB32)
        , m_columns(taps(source.width(), target.width()))
        , m_rows(taps(source.height(), target.height()))
        // Weights of 0 may stand for pixels behind the last one.
        , m_wideRow((size_t(source.width()) + m_columns.taps) * channels)
        , m_wide(m_wideRow * 2)
        , m_narrowRow(size_t(target.width()) * channels)
        // Two more than a target row needs: rows are narrowed by twos, and there may be one too
        // many.
        , m_narrowRows(m_rows.taps + 2)
        , m_narrow(m_narrowRows * m_narrowRow)
    {
    }

    QImage run()
    {
        if (m_result.isNull()) {
            return {}; // no memory
        }
        std::vector<const float *> blended(m_rows.taps);
        for (int row = 0; row < m_result.height(); ++row) {
            const int first = m_rows.first[size_t(row)];
            const int end = std::min(first + int(m_rows.taps), m_source.height());
            while (m_narrowed < end) {
                narrowTwo();
            }
            for (size_t tap = 0; tap < m_rows.taps; ++tap) {
                blended[tap] = narrowRow(first + int(tap));
            }
            m_filters.blend(blended.data(), m_rows.weights.data() + size_t(row) * m_rows.taps,
                            m_rows.taps, reinterpret_cast<QRgb *>(m_result.scanLine(row)),
                            size_t(m_result.width()));
        }
        return m_result;
    }

private:
    void widen(int sourceRow, float *target)
    {
        const int row = m_source.top() + std::min(sourceRow, m_source.height() - 1);
        const auto *pixels = reinterpret_cast<const QRgb *>(m_image.constScanLine(row));
        m_filters.widen(pixels + m_source.left(), target, size_t(m_source.width()));
    }

    float *narrowRow(int sourceRow)
    {
        return m_narrow.data() + size_t(sourceRow) % m_narrowRows * m_narrowRow;
    }

    void narrowTwo()
    {
        auto *upper = m_wide.data();
        auto *lower = upper + m_wideRow;
        widen(m_narrowed, upper);
        widen(m_narrowed + 1, lower);
        m_filters.narrow({{upper, lower}, {narrowRow(m_narrowed), narrowRow(m_narrowed + 1)}},
                         m_columns);
        m_narrowed += 2;
    }

    const QImage &m_image;
    QRect m_source;
    QImage m_result;
    const RowFilters &m_filters = RowFilters::best();
    RowFilters::Columns m_columns;
    RowFilters::Columns m_rows;
    size_t m_wideRow;
    std::vector<float> m_wide; ///< two rows of the source
    size_t m_narrowRow;
    size_t m_narrowRows;
    /// Rows of the source at the target's width, by row number modulo their count.
    std::vector<float> m_narrow;
    int m_narrowed = 0;
};

} // namespace

QImage SharpScaling::scaled(const QImage &image, QRect source, QSize target)
{
    if (image.format() != QImage::Format_RGB32) {
        return image.copy(source).scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    return Scaling(image, source, target).run();
}
