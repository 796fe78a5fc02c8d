// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/FileDescriptor.h"

#include <filesystem>

/// A folder whose entries are to be on the disk: opened before they change, so that nothing but
/// the sync itself is left to fail afterwards.
class SyncedFolder {
public:
    /// Throws std::system_error when the folder cannot be opened. An empty path is the working
    /// directory.
    explicit SyncedFolder(const std::filesystem::path &path);

    /// While this lives, nobody gets the folder for itself; see holdAlone().
    void holdWithOthers() const;

    /// Holds the folder alone while this lives; false when somebody else holds it. Between
    /// processes too, but not where the file system knows no locks.
    [[nodiscard]] bool holdAlone() const;

    /// Waits until the folder's entries are on the disk; throws std::system_error when that fails.
    void sync() const;

private:
    FileDescriptor m_descriptor;
};
