// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/PlayerClock.h"

#include <cmath>

using namespace std::chrono_literals;
using Seconds = VideoPlayer::Seconds;

static constexpr auto observerInterval = 100ms;
static constexpr double shortestRange = 0.1;
static constexpr double durationUntilKnown = 1;

PlayerClock::PlayerClock(QObject *parent)
    : QObject(parent)
{
}

PlayerClock::~PlayerClock()
{
    stopFollowing();
}

void PlayerClock::setPlayer(VideoPlayer *player)
{
    if (m_player == player) {
        return;
    }
    stopFollowing();
    m_player = player;
    setPosition(0);
    setDuration(durationUntilKnown);
    if (m_player) {
        if (const auto duration = m_player->duration()) {
            setDuration(duration->count());
        }
        m_observer = m_player->addPeriodicTimeObserver(observerInterval,
                                                       [this](Seconds time) { tick(time); });
    }
    Q_EMIT playerChanged();
}

void PlayerClock::stopFollowing()
{
    if (m_player && m_observer) {
        m_player->removeTimeObserver(*m_observer);
    }
    m_observer.reset();
}

void PlayerClock::tick(Seconds time)
{
    if (const auto duration = m_player->duration()) {
        setDuration(duration->count());
    }
    setPosition(time.count());
}

double PlayerClock::range() const
{
    return m_duration > shortestRange ? m_duration : shortestRange;
}

void PlayerClock::seek(double seconds)
{
    setPosition(seconds);
    if (m_player) {
        m_player->seek(Seconds(seconds));
    }
}

void PlayerClock::setPosition(double position)
{
    if (m_position != position) {
        m_position = position;
        Q_EMIT positionChanged();
    }
}

void PlayerClock::setDuration(double duration)
{
    if (std::isfinite(duration) && m_duration != duration) {
        m_duration = duration;
        Q_EMIT durationChanged();
    }
}
