// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/media/VideoPlayer.h"

#include <filesystem>

/// A player whose clip never moves by itself; what happened to it outlives it.
class FakePlayer final : public VideoPlayer {
public:
    struct Log {
        std::filesystem::path url = {}; ///< of the clip made last
        int made = 0;
        int alive = 0;
        double rate = 0;
        Seconds time = Seconds(0);
        std::optional<Seconds> duration = {};
    };

    FakePlayer(Log &log, const std::filesystem::path &url)
        : m_log(log)
    {
        m_log.url = url;
        ++m_log.made;
        ++m_log.alive;
        m_log.rate = 0;
        m_log.time = Seconds(0);
    }

    ~FakePlayer() override { --m_log.alive; }

    double rate() const override { return m_log.rate; }

    void play() override { m_log.rate = 1; }

    void pause() override { m_log.rate = 0; }

    Seconds currentTime() const override { return m_log.time; }

    std::optional<Seconds> duration() const override { return m_log.duration; }

    void seek(Seconds time) override { m_log.time = time; }

private:
    Log &m_log;
};
