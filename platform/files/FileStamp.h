// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <filesystem>
#include <optional>

/// What a file is known again by without being opened.
struct FileStamp {
    quint64 device = 0;
    quint64 number = 0; ///< of the file on its device
    qint64 size = 0;    ///< bytes
    qint64 changedSeconds = 0;
    qint64 changedNanoseconds = 0;

    /// Of the regular file at @p path, links followed; nothing for anything else. Blocks; safe from
    /// any thread.
    [[nodiscard]] static std::optional<FileStamp> of(const std::filesystem::path &path);

    bool operator==(const FileStamp &) const = default;
};
