// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/card/DeleteEngine.h"

#include "core/card/DeletionReasons.h"
#include "core/card/RemovalRun.h"
#include "platform/checks/Precondition.h"

#include <algorithm>
#include <limits>
#include <set>

using Location = std::filesystem::path;

std::vector<Location> DeleteEngine::urls(const QList<MediaItem> &items)
{
    std::vector<Location> all;
    for (const auto &item : items) {
        std::ranges::move(item.allURLs(), std::back_inserter(all));
    }
    return all;
}

qint64 DeleteEngine::totalBytes(const std::vector<Location> &urls, const FileManager &fileManager)
{
    qint64 total = 0;
    for (const auto &url : urls) {
        const auto size = fileManager.fileSize(url).value_or(0);
        precondition(size <= std::numeric_limits<qint64>::max() - total,
                     "the sum of file sizes must fit 64 bits");
        total += size;
    }
    return total;
}

DeleteResult DeleteEngine::deleteFiles(const std::vector<Location> &urls, const Location &volumeURL,
                                       const FileManager &fileManager, const Progress &progress,
                                       const std::stop_token &stop, const CardMark *scanned)
{
    return RemovalRun(urls, volumeURL, fileManager, scanned).run(progress, stop);
}

QStringList DeleteEngine::failedItemIDs(const QList<MediaItem> &items, const DeleteResult &result)
{
    std::set<Location> failed;
    for (const auto &failure : result.failures) {
        if (failure.reason != DeletionReasons::fileNotFound()) {
            failed.insert(failure.url);
        }
    }
    QStringList ids;
    for (const auto &item : items) {
        const auto files = item.allURLs();
        if (std::ranges::any_of(files, [&](const auto &file) { return failed.contains(file); })) {
            ids.append(item.id);
        }
    }
    return ids;
}
