// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/card/DeleteEngine.h"

#include "platform/checks/Precondition.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <string>

using namespace Qt::StringLiterals;

namespace {

using Location = std::filesystem::path;
using Reason = std::optional<QString>; ///< absent when the file was deleted

const QString &fileNotFound()
{
    static const auto reason = u"file not found"_s;
    return reason;
}

QString text(const std::error_code &error)
{
    return QString::fromStdString(error.message());
}

/// The resolved path of the card, ending with a separator, so that a sibling volume whose name
/// begins with the card's name stays outside.
std::string rootPrefix(const Location &volumeURL, const FileManager &fileManager)
{
    auto root = fileManager.resolvingSymlinks(volumeURL).native();
    if (!root.ends_with('/')) {
        root += '/';
    }
    return root;
}

Reason removeFile(const Location &url, const std::string &root, FileManager &fileManager)
{
    const auto resolved = fileManager.resolvingSymlinks(url);
    if (!resolved.native().starts_with(root)) {
        return u"outside card volume"_s;
    }
    const auto kind = fileManager.kindOf(resolved);
    if (!kind) {
        return fileNotFound();
    }
    if (*kind == FileManager::EntryKind::Directory) {
        return u"not a regular file"_s;
    }
    if (const auto error = fileManager.remove(url)) {
        return text(error);
    }
    return std::nullopt;
}

/// A removal is on the medium only after its folder has been synced; a worn card reports it there.
/// Each folder once: the files of one that fails count as not deleted.
void syncFolders(const std::vector<Location> &urls, std::vector<Reason> &reasons,
                 FileManager &fileManager)
{
    std::map<Location, std::error_code> synced;
    for (size_t index = 0; index < urls.size(); ++index) {
        if (reasons[index]) {
            continue;
        }
        const auto folder = urls[index].parent_path();
        auto outcome = synced.find(folder);
        if (outcome == synced.end()) {
            outcome = synced.emplace(folder, fileManager.syncFolder(folder)).first;
        }
        if (outcome->second) {
            reasons[index] = text(outcome->second);
        }
    }
}

} // namespace

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
                                       FileManager &fileManager, const Progress &progress)
{
    const auto root = rootPrefix(volumeURL, fileManager);
    const auto total = static_cast<qint64>(urls.size());
    std::vector<Reason> reasons;
    reasons.reserve(urls.size());
    for (const auto &url : urls) {
        reasons.push_back(removeFile(url, root, fileManager));
        if (progress) {
            progress(static_cast<qint64>(reasons.size()), total);
        }
    }
    syncFolders(urls, reasons, fileManager);

    DeleteResult result;
    for (size_t index = 0; index < urls.size(); ++index) {
        if (reasons[index]) {
            result.failures.push_back({urls[index], *reasons[index]});
        } else {
            result.deleted.push_back(urls[index]);
        }
    }
    return result;
}

QStringList DeleteEngine::failedItemIDs(const QList<MediaItem> &items, const DeleteResult &result)
{
    std::set<Location> failed;
    for (const auto &failure : result.failures) {
        if (failure.reason != fileNotFound()) {
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
