// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/MenuCommands.h"

#include "app/AppState.h"
#include "app/KeyHandler.h"

#include <utility>

using Kind = Phase::Kind;

MenuCommands::MenuCommands(AppState &appState, KeyHandler &keyHandler, QObject *parent)
    : QObject(parent)
    , m_appState(appState)
    , m_keyHandler(keyHandler)
{
    connect(&appState, &AppState::phaseChanged, this, &MenuCommands::tellChanges);
    connect(&appState, &AppState::sessionChanged, this, &MenuCommands::tellChanges);
    connect(&appState, &AppState::confirmingDeleteChanged, this, &MenuCommands::tellChanges);
    m_told = {canUndo(), canFinish(), canGoBack()};
}

void MenuCommands::tellChanges()
{
    const std::array now = {canUndo(), canFinish(), canGoBack()};
    if (std::exchange(m_told, now) != now) {
        Q_EMIT availabilityChanged();
    }
}

bool MenuCommands::canUndo() const
{
    const auto kind = m_appState.phase().kind;
    return (kind == Kind::Culling || kind == Kind::Review) && !m_appState.confirmingDelete();
}

bool MenuCommands::canFinish() const
{
    return m_appState.phase().kind == Kind::Culling;
}

bool MenuCommands::canGoBack() const
{
    const auto kind = m_appState.phase().kind;
    return m_appState.hasSession() && kind != Kind::Deleting && kind != Kind::Summary;
}

void MenuCommands::sendKey(const QString &character)
{
    (void)m_keyHandler.handleKey({.chars = character});
}

void MenuCommands::undoDecision()
{
    if (canUndo()) {
        m_appState.undoDecision();
    }
}

void MenuCommands::finishCulling()
{
    if (canFinish()) {
        m_appState.finishCulling();
    }
}

void MenuCommands::backToCardScreen()
{
    if (canGoBack()) {
        const AppState::Operation operation(m_appState);
        m_appState.setConfirmingDelete(false);
        m_appState.leaveCulling();
    }
}
