// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <chrono>
#include <optional>

/// Plays one clip, and holds its file for as long as it lives. A clip that cannot be played stays
/// stopped, without a word. Main thread only.
class VideoPlayer {
public:
    using Seconds = std::chrono::duration<double>;

    VideoPlayer() = default;
    VideoPlayer(const VideoPlayer &) = delete;
    VideoPlayer &operator=(const VideoPlayer &) = delete;
    virtual ~VideoPlayer() = default;

    /// 1 while it plays, 0 when it is paused or at the end.
    [[nodiscard]] virtual double rate() const = 0;

    /// From the beginning when it is at the end.
    virtual void play() = 0;
    virtual void pause() = 0;

    [[nodiscard]] virtual Seconds currentTime() const = 0;

    /// Absent while it is not known.
    [[nodiscard]] virtual std::optional<Seconds> duration() const = 0;

    /// To the frame that contains @p time exactly; playing or paused as before.
    virtual void seek(Seconds time) = 0;
};
