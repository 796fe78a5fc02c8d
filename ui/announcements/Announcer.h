// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "ui/announcements/SpokenState.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <optional>

/// Says in words what happens, for screen readers: every change once, and many in a row, as a held
/// key makes them, as one. Follows the controller. Main thread only.
class Announcer : public QObject {
    Q_OBJECT
    Q_PROPERTY(AppState *appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)

public:
    /// More than a held key takes to repeat, less than two presses that are meant as two.
    static constexpr auto quietTime = std::chrono::milliseconds(100);

    explicit Announcer(QObject *parent = nullptr);

    [[nodiscard]] AppState *appState() const { return m_appState; }

    void setAppState(AppState *appState);

Q_SIGNALS:
    void appStateChanged();
    void announced(const QString &text);

private:
    void announce();

    QPointer<AppState> m_appState;
    QTimer m_quiet;
    std::optional<SpokenState> m_told;
};
