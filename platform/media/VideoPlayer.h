// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>

class VideoFrames;

/// Plays one clip, and holds its file for as long as it lives. A clip that cannot be played stays
/// stopped, without a word. Main thread only; nothing blocks it.
class VideoPlayer : public QObject {
    Q_OBJECT

public:
    using Seconds = std::chrono::duration<double>;
    using TimeObserver = std::function<void(Seconds)>;
    enum class ObserverToken : qint64 {};

    VideoPlayer();
    ~VideoPlayer() override;

    /// 1 while it plays, 0 when it is paused or at the end.
    [[nodiscard]] virtual double rate() const = 0;

    /// From the beginning when it is at the end.
    virtual void play() = 0;
    virtual void pause() = 0;

    /// Where it is, or where the newest seek leads.
    [[nodiscard]] virtual Seconds currentTime() const = 0;

    /// Absent while it is not known.
    [[nodiscard]] virtual std::optional<Seconds> duration() const = 0;

    /// To the frame that contains @p time exactly; playing or paused as before. Of seeks that
    /// follow each other faster than frames can be found, those between are left out, never the
    /// newest.
    virtual void seek(Seconds time) = 0;

    /// The clip's pictures, for the one who shows them; null when there are none to be had.
    [[nodiscard]] virtual std::shared_ptr<VideoFrames> frames() const { return nullptr; }

    /// Tells @p observer the current time in a moment, and then once in each @p interval.
    [[nodiscard]] ObserverToken addPeriodicTimeObserver(std::chrono::milliseconds interval,
                                                        TimeObserver observer);
    /// The observer is not called any more. A token that is not known is ignored.
    void removeTimeObserver(ObserverToken token);

    [[nodiscard]] qsizetype observerCount() const { return qsizetype(m_observers.size()); }

private:
    std::map<ObserverToken, std::unique_ptr<QTimer>> m_observers;
    qint64 m_tokensGiven = 0;
};
