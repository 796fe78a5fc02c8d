// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/media/VideoPlayer.h"

#include <filesystem>
#include <memory>

/// Makes the players of clips, and waits for their threads in the end. Main thread only.
class VideoPlayers {
public:
    struct Settings {
        /// Lets the graphics card decode where it can.
        bool hardwareDecoding = true;
        /// Otherwise there is silence.
        bool sound = true;
    };

    /// After the QGuiApplication: libmpv works only where numbers are written as in C, to which the
    /// program's locale is set for good.
    explicit VideoPlayers(Settings settings);
    VideoPlayers(const VideoPlayers &) = delete;
    VideoPlayers &operator=(const VideoPlayers &) = delete;
    /// Waits for every clip, also for one on a card that hangs. Its players are gone by then.
    ~VideoPlayers();

    /// A player of the clip at @p url, which is opened elsewhere and in its own time.
    [[nodiscard]] std::unique_ptr<VideoPlayer> player(const std::filesystem::path &url);

    /// How many clips have not wholly ended.
    [[nodiscard]] qsizetype clipCount() const;

private:
    class Threads;

    Settings m_settings;
    std::unique_ptr<Threads> m_threads;
};
