// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/CardReads.h"

#include "app/AppState.h"
#include "core/metadata/MetadataReading.h"
#include "platform/files/FileManager.h"

#include <QThreadPool>
#include <QtConcurrent/qtconcurrentrun.h>

using namespace Qt::StringLiterals;

/// The newest item's settings should not wait behind a read that is no longer wanted.
static constexpr int readsAtOnce = 2;

static QThreadPool *poolOf(AppState &appState)
{
    const QString name = u"cardReads"_s;
    auto *pool = appState.findChild<QThreadPool *>(name, Qt::FindDirectChildrenOnly);
    if (!pool) {
        pool = new QThreadPool(&appState);
        pool->setObjectName(name);
        pool->setMaxThreadCount(readsAtOnce);
    }
    return pool;
}

QFuture<std::optional<ImageMetadata>>
CardReads::metadata(AppState &appState, const std::filesystem::path &url, std::stop_token stop)
{
    auto read = [reader = appState.reader(), url,
                 stop = std::move(stop)]() -> std::optional<ImageMetadata> {
        return stop.stop_requested() ? std::nullopt : reader->read(url);
    };
    return QtConcurrent::run(poolOf(appState), std::move(read));
}

QFuture<QHash<QString, qint64>> CardReads::sizes(AppState &appState, const QList<MediaItem> &items,
                                                 std::stop_token stop)
{
    auto ask = [fileManager = appState.fileManager(), items, stop = std::move(stop)] {
        QHash<QString, qint64> sizes;
        for (const auto &item : items) {
            if (stop.stop_requested()) {
                break;
            }
            qint64 bytes = 0;
            for (const auto &url : item.allURLs()) {
                bytes += fileManager->fileSize(url).value_or(0);
            }
            sizes.insert(item.id, bytes);
        }
        return sizes;
    };
    return QtConcurrent::run(poolOf(appState), std::move(ask));
}
