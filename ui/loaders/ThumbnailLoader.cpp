// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/ThumbnailLoader.h"

ThumbnailLoader::ThumbnailLoader(QObject *parent)
    : QObject(parent)
{
}

void ThumbnailLoader::setAppState(AppState *appState)
{
    if (m_appState == appState) {
        return;
    }
    m_appState = appState;
    restart();
    Q_EMIT appStateChanged();
}

void ThumbnailLoader::setItem(const MediaItem &item)
{
    if (m_item == item) {
        return;
    }
    m_item = item;
    restart();
    Q_EMIT itemChanged();
}

void ThumbnailLoader::setLookedAt(bool lookedAt)
{
    if (m_isLookedAt == lookedAt) {
        return;
    }
    m_isLookedAt = lookedAt;
    restart();
    Q_EMIT lookedAtChanged();
}

void ThumbnailLoader::restart()
{
    ++m_generation;
    show({}, false);
    if (m_appState && !m_item.id.isEmpty()) {
        load(m_item);
    }
}

QCoro::Task<> ThumbnailLoader::load(MediaItem item)
{
    const auto generation = m_generation;
    const QPointer self(this);

    const auto priority = m_isLookedAt ? DecodePipeline::Current : DecodePipeline::Visible;
    const QImage image = co_await m_appState->pipeline()->thumbnail(item, priority);

    if (!self || generation != m_generation) {
        co_return;
    }
    show(image, image.isNull());
}

void ThumbnailLoader::show(const QImage &image, bool failed)
{
    if (m_image.cacheKey() != image.cacheKey()) {
        m_image = image;
        Q_EMIT imageChanged();
    }
    if (m_failed != failed) {
        m_failed = failed;
        Q_EMIT failedChanged();
    }
}
