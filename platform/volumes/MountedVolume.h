// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <filesystem>

/// One file system at one mount point.
struct MountedVolume {
    std::filesystem::path mountPoint = {};
    QString uuid = {};        ///< as the file system writes it; empty when it has none
    QString label = {};       ///< empty when the file system has none
    QString device = {};      ///< the device file, such as "/dev/sdb1"
    bool isLocal = true;      ///< false for network file systems
    bool isRemovable = false; ///< the drive, or its medium, can be taken out
    bool isEjectable = false; ///< the drive ejects its medium, or this is a disk image
    bool isReadOnly = false;  ///< by a lock switch, by the mount, or by a file system in doubt

    bool operator==(const MountedVolume &) const = default;
};
