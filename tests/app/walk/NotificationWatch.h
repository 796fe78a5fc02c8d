// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "app/MenuCommands.h"

#include <QObject>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <vector>

/// Listens to all that the controller tells, and notes what is wrong with it: a value told that is
/// the one told last, a change that is not told, a moment at which the values contradict each
/// other.
class NotificationWatch : public QObject {
    Q_OBJECT

public:
    NotificationWatch(AppState &appState, MenuCommands &menu);

    /// Until it is told again, a phase of deleting may begin.
    void expectDeletion() { m_mayBeginDeleting = true; }

    /// What was wrong since it was last asked, now that an event is over.
    [[nodiscard]] QStringList takeOffences();

private:
    struct Watched {
        const char *name;
        std::function<QVariant()> read;
        QVariant told;
    };

    void watch(const char *name, void (AppState::*signal)(), const std::function<QVariant()> &read);
    void hear(size_t index);
    void checkPhase();
    void checkSense();

    AppState &m_appState;
    MenuCommands &m_menu;
    std::vector<Watched> m_watched;
    Phase m_phase;
    bool m_mayBeginDeleting = false;
    int m_toldAvailability = 0;
    QStringList m_offences;
};
