// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

#include <array>

class AppState;
class KeyHandler;

/// What the menus do. A command with a letter goes the way of its key, so that both always do the
/// same. Main thread only.
class MenuCommands : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY availabilityChanged)
    Q_PROPERTY(bool canFinish READ canFinish NOTIFY availabilityChanged)
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY availabilityChanged)

public:
    MenuCommands(AppState &appState, KeyHandler &keyHandler, QObject *parent = nullptr);

    [[nodiscard]] bool canUndo() const;
    [[nodiscard]] bool canFinish() const;
    [[nodiscard]] bool canGoBack() const;

    Q_INVOKABLE void sendKey(const QString &character);
    Q_INVOKABLE void undoDecision();
    Q_INVOKABLE void finishCulling();
    Q_INVOKABLE void backToCardScreen();

Q_SIGNALS:
    void availabilityChanged();

    // Windows beside the main one, which the menus ask for.
    void aboutWanted();
    void updatesWanted();
    void settingsWanted();

private:
    void tellChanges();

    AppState &m_appState;
    KeyHandler &m_keyHandler;
    std::array<bool, 3> m_told = {}; ///< what was available when it was told last
};
