// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/announcements/Announcer.h"

Announcer::Announcer(QObject *parent)
    : QObject(parent)
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quietTime);
    connect(&m_quiet, &QTimer::timeout, this, &Announcer::announce);
}

void Announcer::setAppState(AppState *appState)
{
    if (m_appState == appState) {
        return;
    }
    if (m_appState) {
        m_appState->disconnect(&m_quiet);
    }
    m_appState = appState;
    m_told = {};
    if (appState) {
        const auto wait = qOverload<>(&QTimer::start);
        connect(appState, &AppState::phaseChanged, &m_quiet, wait);
        connect(appState, &AppState::cardChanged, &m_quiet, wait);
        connect(appState, &AppState::sessionChanged, &m_quiet, wait);
        connect(appState, &AppState::changeCountChanged, &m_quiet, wait);
        connect(appState, &AppState::reviewSelectionChanged, &m_quiet, wait);
        connect(appState, &AppState::reviewEnlargedChanged, &m_quiet, wait);
        connect(appState, &AppState::zoomedChanged, &m_quiet, wait);
        m_quiet.start();
    }
    Q_EMIT appStateChanged();
}

void Announcer::announce()
{
    if (!m_appState) {
        return;
    }
    const auto now = SpokenState::of(*m_appState);
    const auto text = m_told ? now.newsSince(*m_told) : now.whole();
    m_told = now;
    if (!text.isEmpty()) {
        Q_EMIT announced(text);
    }
}
