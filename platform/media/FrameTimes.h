// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <optional>
#include <vector>

/// When each frame of a clip is shown, in seconds from the first.
class FrameTimes {
public:
    /// Of a clip of which nothing is known.
    FrameTimes() = default;

    /// In any order. Behind the last there is nothing from @p end on, where that is known.
    explicit FrameTimes(std::vector<double> times, std::optional<double> end = {});

    [[nodiscard]] static FrameTimes regular(double framesPerSecond);

    [[nodiscard]] bool isKnown() const { return !m_times.empty() || m_framesPerSecond > 0; }

    /// A time between the frame that contains @p time, which is shown last before the next, and the
    /// frame before that: halfway, so that the first frame behind it is the one that is looked for.
    /// The first frame's own time where there is none before; @p time itself when nothing is known.
    [[nodiscard]] double aheadOfFrameAt(double time) const;

    /// When the frame behind the one that contains @p time is shown, or the end comes; never if
    /// neither is known.
    [[nodiscard]] double nextFrameAfter(double time) const;

private:
    std::vector<double> m_times; ///< ascending, each once
    std::optional<double> m_end;
    double m_framesPerSecond = 0; ///< of a clip without a list
};
