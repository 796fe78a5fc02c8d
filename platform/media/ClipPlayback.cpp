// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/ClipPlayback.h"

#include "platform/media/ClipStream.h"
#include "platform/media/MpvHandle.h"

#include <mpv/client.h>

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// libmpv takes a frame that lies so many seconds before the time it seeks for that frame.
constexpr double seekTolerance = 0.005;
/// A seek that is overtaken by another is waited for so long: it ends with a frame on screen, which
/// in a row of seeks is what there is to see.
constexpr auto patienceWithSeeks = 1s;
/// How far ahead of a frame decoding begins. The first shown of an open group of pictures are coded
/// behind its key frame, and in a transport stream key frames are found by decoding alone.
constexpr double usualSecondsAhead = 1;
/// A seek that ended too late is tried again from so many times as far ahead, up to a limit.
constexpr double furtherAhead = 4;
constexpr double mostSecondsAhead = 16;
/// The end of a clip lies where its sound ends, or whatever else is in it: so much behind its last
/// frame. What ends earlier was cut.
constexpr double mostBehindLastFrame = 0.1;

enum Observed : uint64_t { Time, Duration, End, Rate };

} // namespace

/// What answers are to, counted on for each seek.
enum class ClipPlayback::Asked : uint64_t {
    Seek,
    FirstTime,
    Picture,
    Sound,
    SeekTime,
    SeekEnd,
    EndTime,
    Count
};

ClipPlayback::ClipPlayback(const MpvHandle &mpv, FrameTimes frameTimes)
    : m_mpv(mpv)
    , m_frameTimes(std::move(frameTimes))
{
    mpv_observe_property(mpv.get(), Time, "time-pos", MPV_FORMAT_DOUBLE);
    mpv_observe_property(mpv.get(), Duration, "duration", MPV_FORMAT_DOUBLE);
    mpv_observe_property(mpv.get(), End, "eof-reached", MPV_FORMAT_FLAG);
    mpv_observe_property(mpv.get(), Rate, "container-fps", MPV_FORMAT_DOUBLE);
    mpv_hook_add(mpv.get(), 0, "on_preloaded", 0);
}

void ClipPlayback::open(int turn)
{
    m_turn = turn;
    m_mpv.command({"loadfile", ClipStream::url});
}

void ClipPlayback::takeEvents()
{
    for (;;) {
        const auto *event = mpv_wait_event(m_mpv.get(), 0);
        switch (event->event_id) {
        case MPV_EVENT_NONE:
            return;
        case MPV_EVENT_PROPERTY_CHANGE:
            takeProperty(event->reply_userdata,
                         *static_cast<const mpv_event_property *>(event->data));
            break;
        case MPV_EVENT_SEEK:
            if (m_seekStage == SeekStage::Accepted) {
                m_seekStage = SeekStage::Begun;
            }
            break;
        case MPV_EVENT_PLAYBACK_RESTART:
            takeRestart();
            break;
        case MPV_EVENT_HOOK:
            takeTracks();
            mpv_hook_continue(m_mpv.get(), static_cast<const mpv_event_hook *>(event->data)->id);
            break;
        case MPV_EVENT_COMMAND_REPLY:
        case MPV_EVENT_GET_PROPERTY_REPLY:
            takeAnswer(event->reply_userdata, *event);
            break;
        case MPV_EVENT_END_FILE: // it would stay on its last frame if it could be played
        case MPV_EVENT_SHUTDOWN:
            m_report.hasFailed = true;
            break;
        default:
            break;
        }
    }
}

void ClipPlayback::takeTracks()
{
    const auto track = m_mpv.videoTrack();
    m_mpv.show(track, m_turn);
    m_videoTrack = track.number;
}

void ClipPlayback::takeProperty(uint64_t observed, const mpv_event_property &property)
{
    const auto number = [&] { return *static_cast<const double *>(property.data); };
    const bool isKnown = property.data != nullptr;
    switch (observed) {
    case Time:
        // The frame that contains a time begins before it.
        if (isKnown && m_isShown && !m_isSeeking && m_plays && !m_report.isAtEnd) {
            m_playedTo = std::max(m_playedTo, number());
            m_report.time = std::max(number(), m_seekTo);
        }
        break;
    case Duration:
        if (isKnown && std::isfinite(number()) && number() > 0) {
            m_report.duration = number();
        }
        break;
    case Rate:
        m_framesPerSecond = isKnown ? number() : 0;
        break;
    case End:
        // While it seeks it may tell of the time before.
        if (!isKnown || m_isSeeking || *static_cast<const int *>(property.data) == 0) {
            m_report.isAtEnd = false;
        } else if (!m_report.isAtEnd) {
            ask("time-pos", MpvHandle::Format::Number, Asked::EndTime);
        }
        break;
    default:
        break;
    }
}

/// libmpv may be waiting for its pictures to be drawn: nobody waits for its answers.
void ClipPlayback::ask(const char *property, MpvHandle::Format format, Asked asked)
{
    const auto count = static_cast<uint64_t>(Asked::Count);
    m_mpv.ask(property, format,
              static_cast<uint64_t>(m_newestSeek) * count + static_cast<uint64_t>(asked));
}

void ClipPlayback::takeAnswer(uint64_t reply, const mpv_event &event)
{
    const auto count = static_cast<uint64_t>(Asked::Count);
    const auto asked = static_cast<Asked>(reply % count);
    if (reply / count != static_cast<uint64_t>(m_newestSeek)) {
        return; // of a seek that was overtaken
    }
    const bool isKnown = event.error >= 0;
    const auto *property = static_cast<const mpv_event_property *>(event.data);
    const auto number = [&](double otherwise) {
        return isKnown ? *static_cast<const double *>(property->data) : otherwise;
    };
    switch (asked) {
    case Asked::Seek:
        m_seekStage = SeekStage::Accepted;
        if (!isKnown && m_isSeeking) { // it will not be done
            m_sought = m_seekTo;
            endSeek(m_report.isAtEnd);
        }
        break;
    case Asked::FirstTime:
        m_firstTime = number(0);
        ask("vo-configured", MpvHandle::Format::Flag, Asked::Picture);
        break;
    case Asked::Picture:
        if (isKnown && *static_cast<const int *>(property->data) != 0) {
            begin();
        } else {
            ask("audio-params/samplerate", MpvHandle::Format::Number, Asked::Sound);
        }
        break;
    case Asked::Sound:
        if (isKnown) {
            begin();
        } else { // nothing in it can be played, and libmpv would look for its end for ever
            m_report.hasFailed = true;
            m_mpv.command({"stop"});
        }
        break;
    case Asked::SeekTime:
        judgeSeek(number(m_seekTo));
        break;
    case Asked::SeekEnd:
        endSeek(isKnown && *static_cast<const int *>(property->data) != 0);
        break;
    case Asked::EndTime:
        if (!m_isSeeking) {
            stayAtEnd(number(m_report.time));
        }
        break;
    case Asked::Count:
        break;
    }
}

void ClipPlayback::takeRestart()
{
    if (!m_isShown) {
        ask("time-pos", MpvHandle::Format::Number, Asked::FirstTime);
    } else if (m_isSeeking && m_seekStage == SeekStage::Begun) { // else it is of the one before
        ask("time-pos", MpvHandle::Format::Number, Asked::SeekTime);
    }
}

void ClipPlayback::begin()
{
    m_isShown = true;
    if (!m_frameTimes.isKnown()) {
        m_frameTimes = FrameTimes::regular(m_framesPerSecond);
    }
}

void ClipPlayback::judgeSeek(double time)
{
    m_sought = time;
    const double next = m_firstTime + m_frameTimes.nextFrameAfter(m_seekTo - m_firstTime);
    if (time >= next && m_secondsAhead < mostSecondsAhead) {
        seekFrom(m_secondsAhead * furtherAhead);
    } else {
        ask("eof-reached", MpvHandle::Format::Flag, Asked::SeekEnd);
    }
}

void ClipPlayback::endSeek(bool isAtEnd)
{
    m_isSeeking = false;
    m_report.seek = m_newestSeek;
    // A pause keeps libmpv from telling that it is at the end, so the frame tells.
    const double end = endBehind(m_sought);
    const bool isCut = m_seekTo > end + mostBehindLastFrame;
    m_report.isAtEnd = isAtEnd || isCut || (m_report.duration && m_seekTo >= *m_report.duration);
    m_report.time = m_report.isAtEnd ? std::min(m_seekTo, end) : m_seekTo;
}

/// libmpv stands on its last frame, which begins at @p time.
void ClipPlayback::stayAtEnd(double time)
{
    const double end = endBehind(time);
    m_report.isAtEnd = true;
    m_report.time = m_plays ? end : std::min(m_report.time, end);
}

/// Where a clip ends whose last frame begins at @p time: that may have been cut.
double ClipPlayback::endBehind(double time) const
{
    const double next = m_firstTime + m_frameTimes.nextFrameAfter(time - m_firstTime);
    const double known = m_report.duration.value_or(time);
    const double end = std::max(std::isfinite(next) ? next : known, m_playedTo);
    return m_report.duration && end > known - mostBehindLastFrame ? known : end;
}

void ClipPlayback::follow(const ClipWish &wish)
{
    if (m_report.hasFailed || !m_isShown) {
        return;
    }
    const bool waits =
        m_isSeeking && std::chrono::steady_clock::now() - m_seekBegan < patienceWithSeeks;
    if (wish.seek != m_newestSeek && !waits) {
        seek(wish);
    }
    if (wish.plays != m_plays) {
        m_plays = wish.plays;
        m_mpv.set("pause", !m_plays);
    }
}

void ClipPlayback::seek(const ClipWish &wish)
{
    m_isSeeking = true;
    m_newestSeek = wish.seek;
    m_seekTo = wish.seekTo;
    m_seekBegan = std::chrono::steady_clock::now();
    m_playedTo = 0;
    m_report.isAtEnd = false;
    seekFrom(usualSecondsAhead);
}

void ClipPlayback::seekFrom(double secondsAhead)
{
    if (secondsAhead != m_secondsAhead) {
        m_secondsAhead = secondsAhead;
        m_mpv.set("hr-seek-demuxer-offset", QByteArray::number(secondsAhead).constData());
    }
    m_seekStage = SeekStage::Asked;
    const double ahead = m_firstTime + m_frameTimes.aheadOfFrameAt(m_seekTo - m_firstTime);
    const auto target = QByteArray::number(std::max(ahead + seekTolerance, 0.0), 'f', 9);
    m_mpv.command({"seek", target.constData(), "absolute+exact"},
                  static_cast<uint64_t>(m_newestSeek) * static_cast<uint64_t>(Asked::Count));
}
