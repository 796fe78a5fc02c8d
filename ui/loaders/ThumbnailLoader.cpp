// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/ThumbnailLoader.h"

ThumbnailLoader::ThumbnailLoader(QObject *parent)
    : ItemLoader(parent)
{
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

void ThumbnailLoader::forget()
{
    show({}, false);
}

QCoro::Task<> ThumbnailLoader::load(MediaItem item)
{
    const auto begun = generation();
    const QPointer self(this);

    const auto priority = m_isLookedAt ? DecodePipeline::Current : DecodePipeline::Visible;
    const QImage image = co_await appState()->pipeline()->thumbnail(item, priority, stopToken());

    if (!self || begun != generation()) {
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
