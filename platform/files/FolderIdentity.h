// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <optional>

/// What tells one folder from every other that the running system knows at a time.
struct FolderIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    quint64 mount = 0; ///< 0 where the kernel does not tell (before Linux 5.8)
    /// Whether the number of the mount is never given again (since Linux 6.8). Other numbers of a
    /// card that is gone are given to the next one.
    bool mountIsUnique = false;
    bool isMountRoot = false; ///< false also where the kernel does not tell

    /// Of @p path as statx(2) finds it with @p descriptor and @p flags.
    [[nodiscard]] static std::optional<FolderIdentity> of(int descriptor, const char *path,
                                                          int flags);
    /// Of the folder that @p descriptor has open.
    [[nodiscard]] static std::optional<FolderIdentity> of(int descriptor);

    bool operator==(const FolderIdentity &) const = default;
};
