// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/card/CardScan.h"
#include "core/metadata/MetadataReading.h"
#include "core/model/MediaItem.h"
#include "platform/files/FileManager.h"

#include <QCoroTask>
#include <QList>

#include <memory>
#include <stop_token>

class QThreadPool;

/// Turns a mounted card into the ordered list of items to cull. Never writes to the card, never
/// fails: what cannot be read is left out, or has no date. A card that is gone when its scan ends
/// counts as empty.
namespace CardScanner {

/// Metadata reads in flight: enough to keep a card busy, few enough not to flood it.
inline constexpr int maxConcurrentReads = 8;

/// Whether the card at @p volumeURL has a folder DCIM. Blocks.
[[nodiscard]] bool dcimExists(const std::filesystem::path &volumeURL,
                              const FileManager &fileManager);

/// The regular files below DCIM, in the order of enumeration. Blocks.
[[nodiscard]] std::vector<std::filesystem::path> listFiles(const std::filesystem::path &volumeURL,
                                                           const FileManager &fileManager);

/// The items of the card in shooting order. Blocks; reads one item after the other.
[[nodiscard]] QList<MediaItem> scan(const std::filesystem::path &volumeURL,
                                    const FileManager &fileManager, const MetadataReading &reader);

/// The same, on a thread of @p pool and with up to maxConcurrentReads reads at once. After @p stop
/// was requested the remaining dates are not read any more and the result means nothing.
[[nodiscard]] QCoro::Task<CardScan> scanDetached(QThreadPool *pool, std::filesystem::path volumeURL,
                                                 std::shared_ptr<const FileManager> fileManager,
                                                 std::shared_ptr<const MetadataReading> reader,
                                                 std::stop_token stop = {});

/// Whether @p a was shot before @p b: by date, those without one first, then by display name, then
/// by id.
[[nodiscard]] bool captureOrder(const MediaItem &a, const MediaItem &b);

} // namespace CardScanner
