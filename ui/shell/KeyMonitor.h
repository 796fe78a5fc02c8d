// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/KeyPress.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>

class QKeyEvent;
class QWindow;

/// Offers every key that goes down in a window to a handler before the window's items see it. A key
/// that the handler consumes is swallowed. Main thread only.
///
/// While a menu, a list or a dialog is open its keys are passed on, and so are chords with Ctrl,
/// Alt or Meta. A key that is held repeats like a press, but only in the situation in which it went
/// down; later repeats are swallowed until it is released.
class KeyMonitor : public QObject {
    Q_OBJECT

public:
    struct Answers {
        /// True when the key is consumed.
        std::function<bool(const KeyPress &)> handleKey;
        std::function<bool()> isPopupOpen;
        /// Another number in another situation: what a held key means must not change under it. A
        /// popup that opens or closes is another situation of itself.
        std::function<quint64()> situation;
    };

    explicit KeyMonitor(Answers answers, QObject *parent = nullptr);

    /// Watches @p window; nothing changes when a window is watched already.
    void install(QWindow *window);

    /// The key of @p event as the key table names it, with the modifiers' effect taken out.
    [[nodiscard]] static KeyPress keyPressOf(const QKeyEvent &event);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool isConsumed(const QKeyEvent &event);

    Answers m_answers;
    QPointer<QWindow> m_window;
    QHash<quint32, quint64> m_down; ///< keys held, and the situation in which they went down
};
