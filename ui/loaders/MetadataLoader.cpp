// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/MetadataLoader.h"

#include "app/CardReads.h"
#include "ui/loaders/MetadataTexts.h"

#include <QCoroFuture>

MetadataLoader::MetadataLoader(QObject *parent)
    : ItemLoader(parent)
{
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

QCoro::Task<> MetadataLoader::load(MediaItem item)
{
    const auto begun = generation();
    const QPointer self(this);

    const auto meta = co_await appState()->cardReads()->metadata(item.displayURL(), stopToken());

    if (!self || begun != generation() || m_meta == meta) {
        co_return;
    }
    m_meta = meta;
    Q_EMIT metaChanged();
}
