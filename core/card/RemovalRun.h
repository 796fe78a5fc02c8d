// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/card/DeleteResult.h"
#include "platform/files/FileManager.h"

#include <functional>
#include <map>
#include <stop_token>
#include <string>

/// One run over files to be removed from one card. It holds the card from its start, judges and
/// removes one file after the other, and believes none of it before the folders have been brought
/// onto the medium and the card has proven to be there still.
///
/// A card that is not the one that was scanned, if that is told, counts as gone: its files bear the
/// names of others.
///
/// Used once, on one thread. Blocks.
class RemovalRun {
public:
    using Location = std::filesystem::path;
    using Progress = std::function<void(qint64 done, qint64 total)>;

    RemovalRun(const std::vector<Location> &urls, const Location &volumeURL,
               const FileManager &fileManager, const CardMark *scanned);

    [[nodiscard]] DeleteResult run(const Progress &progress, const std::stop_token &stop);

private:
    enum class Outcome {
        Failed,   ///< for the reason given
        NotFound, ///< to be believed when the card was there
        Removed,  ///< to be believed when it is on the medium
    };

    /// A file to be removed, and what has become of it.
    struct Target {
        bool isInside = false;
        Location path;   ///< of what it names, links resolved, relative to the card
        Location folder; ///< that it lies in, links resolved, relative to the card
        Location name;   ///< its own, within the folder
        Outcome outcome = Outcome::Failed;
        QString reason;
    };

    [[nodiscard]] const Location &resolvedFolder(const Location &url);
    [[nodiscard]] Target targetAt(const Location &url);
    void openFolders(size_t first, size_t &end);
    void judge(Target &target, const std::stop_token &stop);
    void removeFrom(Target &target);
    void fail(Target &target, const std::error_code &error);
    void failOrNotFound(Target &target, const std::error_code &error);
    [[nodiscard]] std::error_code proveAlive();
    void syncFolders(size_t first, size_t end);
    [[nodiscard]] std::error_code syncFolder(const Location &folder);
    void syncCard();

    const std::vector<Location> &m_urls;
    const FileManager &m_fileManager;
    std::string m_rootPrefix; ///< the resolved path of the card, ending with a separator
    std::unique_ptr<HeldCard> m_card;
    std::error_code m_death;     ///< why the card does not count as there
    std::error_code m_syncError; ///< the first of the run
    std::map<Location, Location> m_resolvedFolders;
    std::map<Location, std::error_code> m_openedFolders; ///< of the group in hand
    std::vector<Target> m_targets;
};
