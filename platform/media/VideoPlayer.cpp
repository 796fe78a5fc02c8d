// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/VideoPlayer.h"

#include <utility>

using namespace std::chrono_literals;

VideoPlayer::VideoPlayer() = default;

VideoPlayer::~VideoPlayer() = default;

VideoPlayer::ObserverToken VideoPlayer::addPeriodicTimeObserver(std::chrono::milliseconds interval,
                                                                TimeObserver observer)
{
    const auto token = ObserverToken(++m_tokensGiven);
    auto timer = std::make_unique<QTimer>();
    timer->setTimerType(Qt::PreciseTimer);
    timer->callOnTimeout(timer.get(),
                         [this, timer = timer.get(), interval, observer = std::move(observer)] {
                             timer->setInterval(interval);
                             observer(currentTime());
                         });
    timer->start(0ms);
    m_observers.emplace(token, std::move(timer));
    return token;
}

void VideoPlayer::removeTimeObserver(ObserverToken token)
{
    const auto found = m_observers.find(token);
    if (found == m_observers.end()) {
        return;
    }
    auto *timer = found->second.release();
    m_observers.erase(found);
    timer->stop();
    timer->deleteLater(); // it may be calling the observer just now
}
