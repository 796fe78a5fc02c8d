// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/SyncedFolder.h"

#include "platform/files/SystemCall.h"

#include <fcntl.h>
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

void SyncedFolder::sync() const
{
    const int result = uninterrupted([this] { return ::fsync(m_descriptor.number()); });
    // Some network file systems know no such thing as the sync of a folder.
    if (result != 0 && errno != EINVAL) {
        throwLastError("fsync");
    }
}
