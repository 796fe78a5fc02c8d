// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MpvPlayer.h"

#include "platform/media/MpvClip.h"

#include <algorithm>
#include <cmath>
#include <utility>

MpvPlayer::MpvPlayer(std::shared_ptr<MpvClip> clip)
    : m_clip(std::move(clip))
    , m_mailbox(std::make_shared<Mailbox>(this))
{
    m_clip->tellTo([this, mailbox = m_mailbox](const ClipReport &report) {
        mailbox->post([this, report] { take(report); });
    });
}

MpvPlayer::~MpvPlayer()
{
    m_mailbox->close();
    m_clip->close();
}

double MpvPlayer::rate() const
{
    return m_wish.plays ? 1 : 0;
}

void MpvPlayer::play()
{
    if (hasFailed()) {
        return;
    }
    if (isAtEnd()) {
        seek(Seconds::zero());
    }
    m_wish.plays = true;
    m_clip->wish(m_wish);
}

void MpvPlayer::pause()
{
    m_wish.plays = false;
    m_clip->wish(m_wish);
}

VideoPlayer::Seconds MpvPlayer::currentTime() const
{
    return m_time;
}

std::optional<VideoPlayer::Seconds> MpvPlayer::duration() const
{
    return m_report.duration ? std::optional(Seconds(*m_report.duration)) : std::nullopt;
}

void MpvPlayer::seek(Seconds time)
{
    if (hasFailed() || !std::isfinite(time.count())) {
        return;
    }
    time = std::max(time, Seconds::zero());
    m_time = std::min(time, duration().value_or(time));
    m_wish.seekTo = m_time.count();
    ++m_wish.seek;
    m_clip->wish(m_wish);
}

std::shared_ptr<VideoFrames> MpvPlayer::frames() const
{
    return m_clip;
}

bool MpvPlayer::isAtEnd() const
{
    return isSeeking() ? m_report.duration && m_time >= *duration() : m_report.isAtEnd;
}

void MpvPlayer::take(const ClipReport &report)
{
    m_report = report;
    if (report.hasFailed) {
        m_wish.plays = false;
        return;
    }
    if (isSeeking()) {
        return; // it tells of what was before
    }
    m_time = Seconds(report.time);
    if (report.isAtEnd && m_wish.plays) {
        pause();
    }
}
