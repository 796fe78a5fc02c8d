// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/EnlargedImageLoader.h"

EnlargedImageLoader::EnlargedImageLoader(QObject *parent)
    : QObject(parent)
{
}

void EnlargedImageLoader::setAppState(AppState *appState)
{
    if (m_appState == appState) {
        return;
    }
    m_appState = appState;
    restart();
    Q_EMIT appStateChanged();
}

void EnlargedImageLoader::setItem(const MediaItem &item)
{
    if (m_item == item) {
        return;
    }
    m_item = item;
    restart();
    Q_EMIT itemChanged();
}

void EnlargedImageLoader::restart()
{
    ++m_generation;
    show({});
    if (m_appState && !m_item.id.isEmpty() && m_item.kind == MediaKind::photo) {
        load(m_item);
    }
}

QCoro::Task<> EnlargedImageLoader::load(MediaItem item)
{
    const auto generation = m_generation;
    const QPointer self(this);

    const QImage image =
        co_await m_appState->pipeline()->screenImage(item, m_appState->screenMaxPixel());

    if (self && generation == m_generation) {
        show(image);
    }
}

void EnlargedImageLoader::show(const QImage &image)
{
    if (m_image.cacheKey() == image.cacheKey()) {
        return;
    }
    m_image = image;
    Q_EMIT imageChanged();
}
