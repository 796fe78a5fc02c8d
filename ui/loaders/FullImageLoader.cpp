// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/FullImageLoader.h"

#include "app/CardReads.h"

#include <QCoroFuture>

FullImageLoader::FullImageLoader(QObject *parent)
    : ItemLoader(parent)
{
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

void FullImageLoader::forget()
{
    m_anchor.reset();
    if (!m_fullImage.isNull()) {
        m_fullImage = {};
        Q_EMIT imageChanged();
    }
}

QCoro::Task<> FullImageLoader::load(MediaItem item)
{
    const auto begun = generation();
    const QPointer self(this);

    // Both begin now; the one that takes longer decides when they are there.
    const auto metadataRead = appState()->cardReads()->metadata(item.displayURL(), stopToken());
    const QImage image = co_await appState()->pipeline()->fullImage(item, stopToken());
    const auto metadata = co_await metadataRead;

    if (!self || begun != generation() || image.isNull()) {
        co_return;
    }
    m_anchor = anchorOf(metadata);
    m_fullImage = image;
    Q_EMIT imageChanged();
}
