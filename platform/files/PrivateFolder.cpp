// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/PrivateFolder.h"

#include "platform/files/SyncedFolder.h"
#include "platform/files/SystemCall.h"

#include <sys/stat.h>

constexpr mode_t userOnly = S_IRWXU;

static bool isFolder(const std::filesystem::path &path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

void makePrivateFolder(const std::filesystem::path &path)
{
    if (isFolder(path)) {
        return;
    }
    const auto parent = path.parent_path();
    if (!parent.empty() && parent != path) {
        makePrivateFolder(parent);
    }
    if (isFolder(path)) {
        return; // "folder/" was "folder"
    }
    const SyncedFolder above(parent);
    if (::mkdir(path.c_str(), userOnly) != 0) {
        const int error = errno;
        if (error == EEXIST && isFolder(path)) {
            return; // another program was faster
        }
        throw std::system_error(error, std::system_category(), "mkdir");
    }
    // A strict umask would leave a folder that not even its owner may enter.
    if (::chmod(path.c_str(), userOnly) != 0) {
        throwLastError("chmod");
    }
    above.sync();
}
