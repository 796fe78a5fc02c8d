// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/FullImageLoader.h"

#include "app/CardReads.h"

#include <QCoroFuture>

FullImageLoader::FullImageLoader(QObject *parent)
    : QObject(parent)
{
}

FullImageLoader::~FullImageLoader()
{
    m_stop.request_stop();
}

void FullImageLoader::setAppState(AppState *appState)
{
    if (m_appState == appState) {
        return;
    }
    m_appState = appState;
    restart();
    Q_EMIT appStateChanged();
}

void FullImageLoader::setItem(const MediaItem &item)
{
    if (m_item == item) {
        return;
    }
    m_item = item;
    restart();
    Q_EMIT itemChanged();
}

QPointF FullImageLoader::anchor() const
{
    return m_anchor.value_or(QPointF(m_fullImage.width() / 2.0, m_fullImage.height() / 2.0));
}

std::optional<QPointF> FullImageLoader::anchorOf(const std::optional<ImageMetadata> &metadata)
{
    if (!metadata || metadata->orientation.value_or(1) != 1) {
        return std::nullopt;
    }
    return metadata->subjectArea;
}

void FullImageLoader::restart()
{
    ++m_generation;
    m_stop.request_stop();
    m_stop = std::stop_source();
    m_anchor.reset();
    if (!m_fullImage.isNull()) {
        m_fullImage = {};
        Q_EMIT imageChanged();
    }
    if (m_appState && !m_item.id.isEmpty()) {
        load(m_item, m_stop.get_token());
    }
}

QCoro::Task<> FullImageLoader::load(MediaItem item, std::stop_token stop)
{
    const auto generation = m_generation;
    const QPointer self(this);

    // Both begin now; the one that takes longer decides when they are there.
    const auto metadataRead = m_appState->cardReads()->metadata(item.displayURL(), std::move(stop));
    const QImage image = co_await m_appState->pipeline()->fullImage(item);
    const auto metadata = co_await metadataRead;

    if (!self || generation != m_generation || image.isNull()) {
        co_return;
    }
    m_anchor = anchorOf(metadata);
    m_fullImage = image;
    Q_EMIT imageChanged();
}
