// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/media/VideoPlayer.h"

#include <QObject>
#include <QPointer>

#include <optional>

/// Follows where a player is, for as long as this lives or the player does. Main thread only.
class PlayerClock : public QObject {
    Q_OBJECT
    Q_PROPERTY(VideoPlayer *player READ player WRITE setPlayer NOTIFY playerChanged REQUIRED)
    Q_PROPERTY(double position READ position NOTIFY positionChanged)
    Q_PROPERTY(double duration READ duration NOTIFY durationChanged)
    Q_PROPERTY(double range READ range NOTIFY durationChanged)

public:
    explicit PlayerClock(QObject *parent = nullptr);
    ~PlayerClock() override;

    [[nodiscard]] VideoPlayer *player() const { return m_player; }

    void setPlayer(VideoPlayer *player);

    /// Seconds, 0 at first.
    [[nodiscard]] double position() const { return m_position; }

    /// Seconds, 1 until it is known.
    [[nodiscard]] double duration() const { return m_duration; }

    /// The duration, but never so short that nothing could be chosen in it.
    [[nodiscard]] double range() const;

    /// Has the player show exactly the frame at @p seconds.
    Q_INVOKABLE void seek(double seconds);

Q_SIGNALS:
    void playerChanged();
    void positionChanged();
    void durationChanged();

private:
    void stopFollowing();
    void tick(VideoPlayer::Seconds time);
    void setPosition(double position);
    void setDuration(double duration);

    QPointer<VideoPlayer> m_player;
    std::optional<VideoPlayer::ObserverToken> m_observer;
    double m_position = 0;
    double m_duration = 1;
};
