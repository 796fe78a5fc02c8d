// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/MetadataLoader.h"

#include "app/CardReads.h"

#include "ui/loaders/MetadataTexts.h"

#include <QCoroFuture>

MetadataLoader::MetadataLoader(QObject *parent)
    : QObject(parent)
{
}

MetadataLoader::~MetadataLoader()
{
    m_stop.request_stop();
}

void MetadataLoader::setAppState(AppState *appState)
{
    if (m_appState == appState) {
        return;
    }
    m_appState = appState;
    restart();
    Q_EMIT appStateChanged();
}

void MetadataLoader::setItem(const MediaItem &item)
{
    if (m_item == item) {
        return;
    }
    m_item = item;
    restart();
    Q_EMIT itemChanged();
}

QStringList MetadataLoader::captureTexts() const
{
    return m_meta ? MetadataTexts::capture(*m_meta) : QStringList();
}

QString MetadataLoader::lensText() const
{
    return m_meta ? MetadataTexts::lens(*m_meta) : QString();
}

QStringList MetadataLoader::fujiTexts() const
{
    return m_meta ? MetadataTexts::fuji(*m_meta) : QStringList();
}

void MetadataLoader::restart()
{
    ++m_generation;
    m_stop.request_stop();
    m_stop = std::stop_source();
    if (m_appState && !m_item.id.isEmpty()) {
        load(m_item, m_stop.get_token());
    }
}

QCoro::Task<> MetadataLoader::load(MediaItem item, std::stop_token stop)
{
    const auto generation = m_generation;
    const QPointer self(this);

    const auto meta =
        co_await m_appState->cardReads()->metadata(item.displayURL(), std::move(stop));

    if (!self || generation != m_generation || m_meta == meta) {
        co_return;
    }
    m_meta = meta;
    Q_EMIT metaChanged();
}
