// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/media/ClipReport.h"
#include "platform/media/ClipWish.h"
#include "platform/media/FrameTimes.h"
#include "platform/media/MpvHandle.h"

#include <chrono>

struct mpv_event;
struct mpv_event_property;

/// What a libmpv does with its clip. For one thread; may wait for libmpv, but for nothing that lies
/// on the card.
class ClipPlayback {
public:
    /// @p mpv outlives this.
    ClipPlayback(const MpvHandle &mpv, FrameTimes frameTimes);

    /// Opens the clip, paused at its beginning. libmpv turns its pictures by @p turn degrees
    /// clockwise, and no further.
    void open(int turn);

    /// Takes in what libmpv has told.
    void takeEvents();

    /// Has libmpv do it, one seek at a time.
    void follow(const ClipWish &wish);

    [[nodiscard]] const ClipReport &report() const { return m_report; }

    /// The number that libmpv gives to the track that is shown, from before its first picture on.
    [[nodiscard]] int64_t videoTrack() const { return m_videoTrack; }

private:
    enum class Asked : uint64_t;
    /// Of a seek by libmpv, which tells of its end as of that of any other.
    enum class SeekStage { Asked, Accepted, Begun };

    void takeTracks();
    void takeProperty(uint64_t observed, const mpv_event_property &property);
    void takeAnswer(uint64_t reply, const mpv_event &event);
    void takeRestart();
    void begin();
    void judgeSeek(double time);
    void endSeek(bool isAtEnd);
    void stayAtEnd(double time);
    [[nodiscard]] double endBehind(double time) const;
    void ask(const char *property, MpvHandle::Format format, Asked asked);
    void seek(const ClipWish &wish);
    void seekFrom(double secondsAhead);

    const MpvHandle &m_mpv;
    FrameTimes m_frameTimes;
    ClipReport m_report;
    int m_turn = 0;
    int64_t m_videoTrack = 1;
    double m_framesPerSecond = 0; ///< as the container has it
    bool m_isShown = false;       ///< its first picture, from where it can be played
    double m_firstTime = 0;       ///< of that picture, in seconds
    bool m_plays = false;
    double m_playedTo = 0; ///< since the newest seek, in seconds
    bool m_isSeeking = false;
    SeekStage m_seekStage = SeekStage::Asked;
    qint64 m_newestSeek = 0;   ///< of those that have begun
    double m_seekTo = 0;       ///< by that one, in seconds
    double m_sought = 0;       ///< time of the frame it came to
    double m_secondsAhead = 0; ///< of its frame, where it begins to decode
    std::chrono::steady_clock::time_point m_seekBegan;
};
