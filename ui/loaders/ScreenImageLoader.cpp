// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/ScreenImageLoader.h"

ScreenImageLoader::ScreenImageLoader(QObject *parent)
    : QObject(parent)
{
}

ScreenImageLoader::~ScreenImageLoader()
{
    m_stop.request_stop();
}

void ScreenImageLoader::setAppState(AppState *appState)
{
    if (m_appState == appState) {
        return;
    }
    if (m_appState) {
        m_appState->disconnect(this);
    }
    m_appState = appState;
    if (appState) {
        connect(appState, &AppState::sessionChanged, this, &ScreenImageLoader::forgetSession);
        connect(appState, &AppState::changeCountChanged, this, &ScreenImageLoader::follow);
    }
    forgetSession();
    Q_EMIT appStateChanged();
}

void ScreenImageLoader::forgetSession()
{
    // Ids repeat from card to card, so nothing of another session may stay.
    dropLoading();
    m_itemID.reset();
    setFailed(false);
    show({}, false);
    follow();
}

void ScreenImageLoader::dropLoading()
{
    ++m_generation;
    m_stop.request_stop();
    m_stop = std::stop_source();
}

void ScreenImageLoader::follow()
{
    const auto *session = m_appState ? m_appState->session() : nullptr;
    const auto *item = session ? session->currentItem() : nullptr;
    const auto id = item ? std::optional(item->id) : std::nullopt;
    if (m_itemID == id) {
        return;
    }
    m_itemID = id;
    dropLoading();
    setFailed(false);
    if (!item || item->kind == MediaKind::video) {
        show({}, false);
        return;
    }
    load(*item);
}

QCoro::Task<> ScreenImageLoader::load(MediaItem item)
{
    const auto generation = m_generation;
    const auto stop = m_stop.get_token();
    const QPointer self(this);
    const auto isWanted = [&] { return self && generation == self->m_generation && m_appState; };
    auto *pipeline = m_appState->pipeline();

    if (const QImage cached = pipeline->cachedScreenImage(item); !cached.isNull()) {
        show(cached, false);
        co_return;
    }

    const QImage thumbnail = co_await pipeline->thumbnail(item, DecodePipeline::Current, stop);
    if (!isWanted()) {
        co_return;
    }
    if (!thumbnail.isNull()) {
        show(thumbnail, true);
    }

    const QImage image = co_await pipeline->screenImage(item, m_appState->screenMaxPixel(), stop);
    if (!isWanted()) {
        co_return;
    }
    if (!image.isNull()) {
        show(image, false);
    } else if (thumbnail.isNull()) {
        setFailed(true);
    }
}

void ScreenImageLoader::setFailed(bool failed)
{
    if (m_failed != failed) {
        m_failed = failed;
        Q_EMIT failedChanged();
    }
}

void ScreenImageLoader::show(const QImage &image, bool stale)
{
    if (m_isStale != stale) {
        m_isStale = stale;
        Q_EMIT isStaleChanged();
    }
    if (m_currentImage.cacheKey() != image.cacheKey()) {
        m_currentImage = image;
        Q_EMIT imageChanged();
    }
}
