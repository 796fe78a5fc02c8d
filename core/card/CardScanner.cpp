// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/card/CardScanner.h"

#include "core/model/Pairing.h"
#include "core/text/UnicodeOrder.h"

#include <QCoroFuture>
#include <QThreadPool>
#include <QtConcurrent/qtconcurrentmap.h>
#include <QtConcurrent/qtconcurrentrun.h>

#include <algorithm>

static std::filesystem::path dcim(const std::filesystem::path &volumeURL)
{
    return volumeURL / "DCIM";
}

static std::optional<QDateTime> captureDate(const MediaItem &item, const MetadataReading &reader)
{
    const auto metadata = reader.read(item.displayURL());
    return metadata ? metadata->captureDate : std::nullopt;
}

static QList<MediaItem> inShootingOrder(QList<MediaItem> items)
{
    std::ranges::sort(items, CardScanner::captureOrder);
    return items;
}

/// Blocks its thread; the dates are read on threads of its own.
static QList<MediaItem> scanConcurrently(const std::filesystem::path &volumeURL,
                                         const FileManager &fileManager,
                                         const MetadataReading &reader, const std::stop_token &stop)
{
    auto items = Pairing::pair(CardScanner::listFiles(volumeURL, fileManager));
    QThreadPool readers;
    readers.setMaxThreadCount(CardScanner::maxConcurrentReads - 1); // and this thread reads, too
    QtConcurrent::blockingMap(&readers, items, [&reader, &stop](MediaItem &item) {
        if (!stop.stop_requested()) {
            item.captureDate = captureDate(item, reader);
        }
    });
    return inShootingOrder(std::move(items));
}

bool CardScanner::dcimExists(const std::filesystem::path &volumeURL, const FileManager &fileManager)
{
    return fileManager.kindOf(dcim(volumeURL)) == FileManager::EntryKind::Directory;
}

std::vector<std::filesystem::path> CardScanner::listFiles(const std::filesystem::path &volumeURL,
                                                          const FileManager &fileManager)
{
    return fileManager.regularFilesBelow(dcim(volumeURL));
}

QList<MediaItem> CardScanner::scan(const std::filesystem::path &volumeURL,
                                   const FileManager &fileManager, const MetadataReading &reader)
{
    auto items = Pairing::pair(listFiles(volumeURL, fileManager));
    for (auto &item : items) {
        item.captureDate = captureDate(item, reader);
    }
    return inShootingOrder(std::move(items));
}

QCoro::Task<QList<MediaItem>>
CardScanner::scanDetached(QThreadPool *pool, std::filesystem::path volumeURL,
                          std::shared_ptr<const FileManager> fileManager,
                          std::shared_ptr<const MetadataReading> reader, std::stop_token stop)
{
    const auto scanCard = [volumeURL, fileManager, reader, stop] {
        return scanConcurrently(volumeURL, *fileManager, *reader, stop);
    };
    co_return co_await QtConcurrent::run(pool, scanCard);
}

bool CardScanner::captureOrder(const MediaItem &a, const MediaItem &b)
{
    static const QDateTime distantPast(QDate(1, 1, 1), QTime(0, 0), Qt::UTC);
    const auto dateOfA = a.captureDate.value_or(distantPast);
    const auto dateOfB = b.captureDate.value_or(distantPast);
    if (dateOfA != dateOfB) {
        return dateOfA < dateOfB;
    }
    const auto byName = compareInUnicodeOrder(a.displayName(), b.displayName());
    return byName != 0 ? byName < 0 : precedesInUnicodeOrder(a.id, b.id);
}
