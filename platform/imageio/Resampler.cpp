// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/Resampler.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

namespace {

constexpr double lobes = 3;

double lanczos(double x)
{
    if (x == 0) {
        return 1;
    }
    if (std::abs(x) >= lobes) {
        return 0;
    }
    const double angle = std::numbers::pi * x;
    return lobes * std::sin(angle) * std::sin(angle / lobes) / (angle * angle);
}

} // namespace

std::vector<Resampler::Taps> Resampler::taps(int source, int target)
{
    const double scale = static_cast<double>(source) / target; // at least 1
    std::vector<Taps> result(static_cast<size_t>(target));
    for (int index = 0; index < target; ++index) {
        const double centre = (index + 0.5) * scale - 0.5;
        const int first = std::max(0, static_cast<int>(std::ceil(centre - lobes * scale)));
        const int last = std::min(source - 1, static_cast<int>(std::floor(centre + lobes * scale)));
        std::vector<double> weights;
        double sum = 0;
        for (int at = first; at <= last; ++at) {
            weights.push_back(lanczos((at - centre) / scale));
            sum += weights.back();
        }
        auto &place = result[static_cast<size_t>(index)];
        place.first = first;
        for (const auto weight : weights) {
            place.weights.push_back(static_cast<float>(weight / sum));
        }
    }
    return result;
}

Resampler::Resampler(QSize source, QSize target, UprightPicture &picture)
    : m_source(source)
    , m_target(target)
    , m_picture(picture)
    , m_columns(taps(source.width(), target.width()))
    , m_rows(taps(source.height(), target.height()))
    , m_wide(static_cast<size_t>(source.width()))
    , m_narrow(static_cast<size_t>(target.width()))
    , m_output(static_cast<size_t>(target.width()))
{
    // A source row takes part in as many target rows as two reaches of the filter hold.
    constexpr auto openRows = static_cast<size_t>(2 * lobes) + 2;
    m_sums.assign(openRows, std::vector<Pixel>(static_cast<size_t>(target.width())));
}

std::vector<Resampler::Pixel> &Resampler::sumOf(int targetRow)
{
    return m_sums[static_cast<size_t>(targetRow) % m_sums.size()];
}

void Resampler::widen(const QRgb *pixels)
{
    using Bytes = quint8 __attribute__((vector_size(4)));
    for (size_t column = 0; column < m_wide.size(); ++column) {
        Bytes bytes;
        std::memcpy(&bytes, pixels + column, sizeof(bytes));
        m_wide[column] = __builtin_convertvector(bytes, Pixel);
    }
}

void Resampler::narrowRow()
{
    for (size_t column = 0; column < m_narrow.size(); ++column) {
        const auto &taps = m_columns[column];
        const auto *source = m_wide.data() + taps.first;
        const auto *weight = taps.weights.data();
        const auto *const end = weight + taps.weights.size();
        // Two sums, because each addition would wait for the one before it.
        Pixel even = {};
        Pixel odd = {};
        for (; end - weight >= 2; weight += 2, source += 2) {
            even += source[0] * weight[0];
            odd += source[1] * weight[1];
        }
        if (weight != end) {
            even += *source * *weight;
        }
        m_narrow[column] = even + odd;
    }
}

void Resampler::emitRow(std::vector<Pixel> &sum)
{
    for (size_t column = 0; column < m_output.size(); ++column) {
        const auto value = [&](int channel) {
            return static_cast<quint32>(std::clamp(sum[column][channel] + 0.5F, 0.0F, 255.0F));
        };
        // The channels lie in memory as those of QRgb on this little-endian machine.
        m_output[column] = 0xff000000U | value(2) << 16 | value(1) << 8 | value(0);
    }
    m_picture.addRow(m_output.data());
    std::ranges::fill(sum, Pixel{});
}

void Resampler::addRow(const QRgb *pixels)
{
    if (m_row >= m_source.height()) {
        return;
    }
    widen(pixels);
    narrowRow();
    for (int target = m_firstOpen; target < m_target.height(); ++target) {
        const auto &taps = m_rows[static_cast<size_t>(target)];
        if (taps.first > m_row) {
            break;
        }
        const auto tap = static_cast<size_t>(m_row - taps.first);
        if (tap >= taps.weights.size()) {
            continue;
        }
        const auto weight = taps.weights[tap];
        auto *sum = sumOf(target).data();
        for (const auto &pixel : m_narrow) {
            *sum++ += pixel * weight;
        }
        if (tap + 1 == taps.weights.size()) {
            emitRow(sumOf(target));
            m_firstOpen = target + 1;
        }
    }
    ++m_row;
}
