// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/SyncedFolder.h"

#include "platform/files/SystemCall.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

static FileDescriptor openedFolder(const std::filesystem::path &path)
{
    const auto folder = path.empty() ? std::filesystem::path(".") : path;
    FileDescriptor descriptor(
        uninterrupted([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!descriptor.isOpen()) {
        throwLastError("open");
    }
    return descriptor;
}

SyncedFolder::SyncedFolder(const std::filesystem::path &path)
    : m_descriptor(openedFolder(path))
{
}

void SyncedFolder::holdWithOthers() const
{
    (void)uninterrupted([this] { return ::flock(m_descriptor.number(), LOCK_SH); });
}

bool SyncedFolder::holdAlone() const
{
    return ::flock(m_descriptor.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

void SyncedFolder::sync() const
{
    const int result = uninterrupted([this] { return ::fsync(m_descriptor.number()); });
    // Some network file systems know no such thing as the sync of a folder.
    if (result != 0 && errno != EINVAL) {
        throwLastError("fsync");
    }
}
