// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/SharpScaling.h"

#include "platform/imageio/RowFilters.h"

#include <QSemaphore>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <memory>

namespace {

constexpr size_t channels = 4;
/// Fewer are not worth another thread's start and the source rows that two strips both need.
constexpr int rowsOfAStrip = 64;
/// More than processors, so that nobody waits long for the last one.
constexpr int mostStrips = 16;
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

/// What all strips of a scaling share.
struct Scaling {
    const QImage &image;
    QRect source;
    QSize target;
    uchar *pixels; ///< of the result
    qsizetype bytesPerLine;
    RowFilters::Columns columns = taps(source.width(), target.width());
    RowFilters::Columns rows = taps(source.height(), target.height());
    const RowFilters &filters = RowFilters::best();
};

/// Scales some rows of the result, from the top down.
class Strip {
public:
    Strip(const Scaling &scaling, int firstRow)
        : m_scaling(scaling)
        // Weights of 0 may stand for pixels behind the last one.
        , m_wideRow((size_t(scaling.source.width()) + scaling.columns.taps) * channels)
        , m_wide(m_wideRow * 2)
        , m_narrowRow(size_t(scaling.target.width()) * channels)
        // Two more than a target row needs: rows are narrowed by twos, and there may be one too
        // many.
        , m_narrowRows(scaling.rows.taps + 2)
        , m_narrow(m_narrowRows * m_narrowRow)
        , m_narrowed(scaling.rows.first[size_t(firstRow)])
    {
    }

    void run(int firstRow, int endRow)
    {
        const auto &rows = m_scaling.rows;
        std::vector<const float *> blended(rows.taps);
        for (int row = firstRow; row < endRow; ++row) {
            const int first = rows.first[size_t(row)];
            const int end = std::min(first + int(rows.taps), m_scaling.source.height());
            while (m_narrowed < end) {
                narrowTwo();
            }
            for (size_t tap = 0; tap < rows.taps; ++tap) {
                blended[tap] = narrowRow(first + int(tap));
            }
            m_scaling.filters.blend(
                blended.data(), rows.weights.data() + size_t(row) * rows.taps, rows.taps,
                reinterpret_cast<QRgb *>(m_scaling.pixels + m_scaling.bytesPerLine * row),
                size_t(m_scaling.target.width()));
        }
    }

private:
    void widen(int sourceRow, float *target)
    {
        const auto &source = m_scaling.source;
        const int row = source.top() + std::min(sourceRow, source.height() - 1);
        const auto *pixels = reinterpret_cast<const QRgb *>(m_scaling.image.constScanLine(row));
        m_scaling.filters.widen(pixels + source.left(), target, size_t(source.width()));
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
        m_scaling.filters.narrow(
            {{upper, lower}, {narrowRow(m_narrowed), narrowRow(m_narrowed + 1)}},
            m_scaling.columns);
        m_narrowed += 2;
    }

    const Scaling &m_scaling;
    size_t m_wideRow;
    std::vector<float> m_wide; ///< two rows of the source
    size_t m_narrowRow;
    size_t m_narrowRows;
    /// Rows of the source at the target's width, by row number modulo their count.
    std::vector<float> m_narrow;
    int m_narrowed;
};

/// The strips of one scaling, of which whoever has time takes the next.
class Strips {
public:
    Strips(const Scaling &scaling, int count)
        : m_scaling(scaling)
        , m_count(count)
    {
    }

    /// Takes strips until there are none. For many threads at once, and still when whoever
    /// waited has long gone on.
    void work()
    {
        for (int strip = m_next++; strip < m_count; strip = m_next++) {
            const int first = rowOf(strip);
            Strip(m_scaling, first).run(first, rowOf(strip + 1));
            m_done.release();
        }
    }

    void wait() { m_done.acquire(m_count); }

private:
    [[nodiscard]] int rowOf(int strip) const
    {
        return int(qint64(m_scaling.target.height()) * strip / m_count);
    }

    const Scaling &m_scaling; ///< gone when all strips are done
    int m_count;
    std::atomic<int> m_next = 0;
    QSemaphore m_done;
};

} // namespace

QImage SharpScaling::scaled(const QImage &image, QRect source, QSize target, QThreadPool *helpers)
{
    if (image.format() != QImage::Format_RGB32) {
        return image.copy(source).scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    QImage result(target, QImage::Format_RGB32);
    if (result.isNull()) {
        return {}; // no memory
    }
    const Scaling scaling{.image = image,
                          .source = source,
                          .target = target,
                          .pixels = result.bits(),
                          .bytesPerLine = result.bytesPerLine()};
    const int count = helpers ? std::clamp(target.height() / rowsOfAStrip, 1, mostStrips) : 1;
    const auto strips = std::make_shared<Strips>(scaling, count);
    for (int helper = 1; helper < count; ++helper) {
        if (!helpers->tryStart([strips] { strips->work(); })) {
            break;
        }
    }
    strips->work();
    strips->wait();
    return result;
}
