// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/HeldCard.h"

#include <QtGlobal>

#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

/// The file-system services that Kestle needs, behind an interface so that faults can be injected.
///
/// Every operation blocks, may be called from several threads at once, changes nothing, and leaves
/// no descriptor open but those of a card that is held.
class FileManager {
public:
    using EntryKind = HeldCard::EntryKind;

    FileManager() = default;
    FileManager(const FileManager &) = delete;
    FileManager &operator=(const FileManager &) = delete;
    virtual ~FileManager() = default;

    /// The regular files below @p folder at any depth: depth first, each folder's entries in byte
    /// order of their names. Hidden entries (leading dot), the inside of package folders, links,
    /// other mounts and whatever cannot be read are left out. Empty when @p folder cannot be
    /// opened or is a link.
    [[nodiscard]] virtual std::vector<std::filesystem::path>
    regularFilesBelow(const std::filesystem::path &folder) const = 0;

    /// What @p path names, links followed; absent when nothing exists there.
    [[nodiscard]] virtual std::optional<EntryKind>
    kindOf(const std::filesystem::path &path) const = 0;

    /// Whether @p folder's entries can be listed.
    [[nodiscard]] virtual bool isListable(const std::filesystem::path &folder) const = 0;

    /// @p path with its symbolic links resolved as far as it exists, absolute, without "." and
    /// ".." and without a trailing separator.
    [[nodiscard]] virtual std::filesystem::path
    resolvingSymlinks(const std::filesystem::path &path) const = 0;

    /// Whether what @p path names is a link itself, wherever the folders above it lead.
    [[nodiscard]] virtual bool isLink(const std::filesystem::path &path) const = 0;

    /// Size in bytes of the file at @p path, links followed; absent when it cannot be read.
    [[nodiscard]] virtual std::optional<qint64>
    fileSize(const std::filesystem::path &path) const = 0;

    /// Whether nothing can be removed from the file system that @p folder lies on: it is mounted
    /// read-only.
    [[nodiscard]] virtual bool isReadOnly(const std::filesystem::path &folder) const = 0;

    /// Holds the card whose root is @p root, links followed. Null and @p error on failure.
    [[nodiscard]] virtual std::unique_ptr<HeldCard> hold(const std::filesystem::path &root,
                                                         std::error_code &error) const = 0;
};
