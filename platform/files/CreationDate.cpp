// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/CreationDate.h"

#include <fcntl.h>
#include <sys/stat.h>

std::optional<QDateTime> creationDate(const std::filesystem::path &path)
{
    struct statx status = {};
    if (::statx(AT_FDCWD, path.c_str(), AT_STATX_SYNC_AS_STAT, STATX_BTIME, &status) != 0 ||
        (status.stx_mask & STATX_BTIME) == 0) {
        return std::nullopt;
    }
    const qint64 milliseconds =
        status.stx_btime.tv_sec * 1000 + status.stx_btime.tv_nsec / 1'000'000;
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
}
