// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/KeyPress.h"

#include <QDeadlineTimer>
#include <QObject>

#include <chrono>

class AppState;

/// Decides by phase what a key means. Main thread only.
class KeyHandler {
public:
    /// A summary that has just come up is not closed by the press that somebody meant for what was
    /// there before: time enough to see that some files could not be deleted.
    static constexpr auto glance = std::chrono::milliseconds(400);

    explicit KeyHandler(AppState &appState, std::chrono::milliseconds summaryStays = glance);

    /// True when the key was consumed; any other key goes on to the window.
    [[nodiscard]] bool handleKey(const KeyPress &key);

    /// Presses the screen's default button with Return, where handleKey() has not consumed it. True
    /// when there was one, also when it is too early to press it.
    [[nodiscard]] bool pressDefaultButton(const KeyPress &key);

    /// Another number whenever the same key may mean something else: a key that is held must not
    /// go on into a situation in which it was not pressed.
    [[nodiscard]] quint64 situation() const;

private:
    [[nodiscard]] bool handleCullingKey(const QString &chars, quint16 keyCode);
    [[nodiscard]] bool handleReviewKey(const QString &chars, quint16 keyCode);
    [[nodiscard]] bool handleEnlargedKey(const QString &chars, quint16 keyCode);
    [[nodiscard]] bool handleVideoKey(const QString &chars, quint16 keyCode);
    [[nodiscard]] bool panOrStep(quint16 keyCode);
    void rejectCurrent();
    void stepForward();
    void stepBack();
    void panBy(qreal horizontally, qreal vertically);
    void moveSelection(qint64 by);

    AppState &m_appState;
    std::chrono::milliseconds m_summaryStays;
    QDeadlineTimer m_summaryIsNew; ///< until it may be closed
    QObject m_context;             ///< of what is connected
};
