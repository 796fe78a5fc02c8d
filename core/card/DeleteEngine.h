// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/card/DeleteResult.h"
#include "core/model/MediaItem.h"
#include "platform/files/FileManager.h"

#include <QList>

#include <functional>
#include <stop_token>

/// Removes files from a card for good. Blocks on file operations: never on the main thread. Nothing
/// is shared between calls.
namespace DeleteEngine {

/// Called on the thread that runs the deletion, after each location: how many have been dealt with
/// so far, and how many there are.
using Progress = std::function<void(qint64 done, qint64 total)>;

/// The files of @p items, item after item.
[[nodiscard]] std::vector<std::filesystem::path> urls(const QList<MediaItem> &items);

/// The files' sizes in bytes, summed; a size that cannot be read counts as 0.
[[nodiscard]] qint64 totalBytes(const std::vector<std::filesystem::path> &urls,
                                const FileManager &fileManager);

/// Removes the files at @p urls that lie on the card at @p volumeURL, one after the other, whatever
/// happens to the others. A file counts as deleted when its entry is removed, its folder and the
/// card have been brought onto the medium, and the card has proven to be still there; otherwise it
/// is a failure, with one of the reasons "outside card volume", "file not found", "not a regular
/// file", or the system's own text. "file not found" is only said while the card is there.
///
/// Acts on the card that is mounted at the beginning and on no other; and only if it is the one
/// that @p scanned, if given, was made of. When @p stop is requested,
/// the file in hand is finished; those not begun fail as cancelled, without progress.
[[nodiscard]] DeleteResult
deleteFiles(const std::vector<std::filesystem::path> &urls, const std::filesystem::path &volumeURL,
            const FileManager &fileManager, const Progress &progress = {},
            const std::stop_token &stop = {}, const CardMark *scanned = nullptr);

/// The ids of those of @p items that still have a file on the card: a failed one. A file that was
/// not found counts as deleted.
[[nodiscard]] QStringList failedItemIDs(const QList<MediaItem> &items, const DeleteResult &result);

} // namespace DeleteEngine
