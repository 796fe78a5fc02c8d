// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FolderIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

/// STATX_MNT_ID_UNIQUE of statx(2), which Debian 12's headers do not have yet.
static constexpr unsigned uniqueMount = 0x4000;

std::optional<FolderIdentity> FolderIdentity::of(int descriptor, const char *path, int flags)
{
    struct statx status = {};
    const unsigned wanted = STATX_INO | STATX_MNT_ID | uniqueMount;
    if (::statx(descriptor, path, flags, wanted, &status) != 0) {
        return std::nullopt;
    }
    const bool isUnique = (status.stx_mask & uniqueMount) != 0;
    const bool hasMount = isUnique || (status.stx_mask & STATX_MNT_ID) != 0;
    return FolderIdentity{.device = ::makedev(status.stx_dev_major, status.stx_dev_minor),
                          .inode = status.stx_ino,
                          .mount = hasMount ? status.stx_mnt_id : 0,
                          .mountIsUnique = isUnique,
                          .isMountRoot = (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0};
}

std::optional<FolderIdentity> FolderIdentity::of(int descriptor)
{
    return of(descriptor, "", AT_EMPTY_PATH);
}
