// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

/// The file-system services that Kestle needs, behind an interface so that faults can be injected.
///
/// Every operation blocks, may be called from several threads at once, and leaves no descriptor
/// open. Only remove() and syncFolder() change anything.
class FileManager {
public:
    enum class EntryKind {
        Directory,
        Other, ///< any existing entry that is not a directory
    };

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

    /// Size in bytes of the file at @p path, links followed; absent when it cannot be read.
    [[nodiscard]] virtual std::optional<qint64>
    fileSize(const std::filesystem::path &path) const = 0;

    /// Removes the entry at @p path itself (a link, not what it points to); never a directory.
    [[nodiscard]] virtual std::error_code remove(const std::filesystem::path &path) = 0;

    /// Brings the entries of @p folder onto the medium.
    [[nodiscard]] virtual std::error_code syncFolder(const std::filesystem::path &folder) = 0;
};
