// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/FrameTimes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

/// Times come in units of a clip, of a slider and of binary fractions: one that means the beginning
/// of a frame may lie this far before it.
constexpr double rounding = 1e-5;

FrameTimes::FrameTimes(std::vector<double> times, std::optional<double> end)
    : m_times(std::move(times))
{
    std::ranges::sort(m_times);
    m_times.erase(std::unique(m_times.begin(), m_times.end()), m_times.end());
    const double first = m_times.empty() ? 0 : m_times.front();
    for (auto &time : m_times) {
        time -= first;
    }
    if (end) {
        m_end = *end - first;
    }
}

FrameTimes FrameTimes::regular(double framesPerSecond)
{
    FrameTimes times;
    times.m_framesPerSecond = std::isfinite(framesPerSecond) ? framesPerSecond : 0;
    return times;
}

double FrameTimes::aheadOfFrameAt(double time) const
{
    if (!m_times.empty()) {
        const auto next = std::ranges::upper_bound(m_times, time + rounding);
        const auto index = next - m_times.begin() - 1;
        return index < 1 ? 0 : (next[-2] + next[-1]) / 2;
    }
    if (m_framesPerSecond > 0) {
        const double index = std::floor((time + rounding) * m_framesPerSecond);
        return index < 1 ? 0 : (index - 0.5) / m_framesPerSecond;
    }
    return time;
}

double FrameTimes::nextFrameAfter(double time) const
{
    constexpr double never = std::numeric_limits<double>::infinity();
    if (!m_times.empty()) {
        const auto next = std::ranges::upper_bound(m_times, time + rounding);
        return next != m_times.end() ? *next : m_end.value_or(never);
    }
    return m_framesPerSecond > 0
               ? (std::floor((time + rounding) * m_framesPerSecond) + 1) / m_framesPerSecond
               : never;
}
