// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/ItemLoader.h"

ItemLoader::~ItemLoader()
{
    m_stop.request_stop();
}

void ItemLoader::setAppState(AppState *appState)
{
    if (m_appState == appState) {
        return;
    }
    m_appState = appState;
    restart();
    Q_EMIT appStateChanged();
}

void ItemLoader::setItem(const MediaItem &item)
{
    if (m_item == item) {
        return;
    }
    m_item = item;
    restart();
    Q_EMIT itemChanged();
}

void ItemLoader::restart()
{
    ++m_generation;
    m_stop.request_stop();
    m_stop = std::stop_source();
    forget();
    if (m_appState && !m_item.id.isEmpty()) {
        load(m_item);
    }
}
