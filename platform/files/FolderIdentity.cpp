// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FolderIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

std::optional<FolderIdentity> FolderIdentity::of(int descriptor, const char *path, int flags)
{
    struct statx status = {};
    if (::statx(descriptor, path, flags, STATX_INO | STATX_MNT_ID, &status) != 0) {
        return std::nullopt;
    }
    return FolderIdentity{.device = ::makedev(status.stx_dev_major, status.stx_dev_minor),
                          .inode = status.stx_ino,
                          .mount = (status.stx_mask & STATX_MNT_ID) != 0 ? status.stx_mnt_id : 0};
}

std::optional<FolderIdentity> FolderIdentity::of(int descriptor)
{
    return of(descriptor, "", AT_EMPTY_PATH);
}
