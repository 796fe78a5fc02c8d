// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FileStamp.h"

#include <sys/stat.h>

std::optional<FileStamp> FileStamp::of(const std::filesystem::path &path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return FileStamp{.device = status.st_dev,
                     .number = status.st_ino,
                     .size = status.st_size,
                     .changedSeconds = status.st_mtim.tv_sec,
                     .changedNanoseconds = status.st_mtim.tv_nsec};
}
