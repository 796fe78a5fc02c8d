// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/ReadFile.h"

#include "platform/files/FileDescriptor.h"
#include "platform/files/SystemCall.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

std::optional<QByteArray> readFile(const std::filesystem::path &file, qint64 limit)
{
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    const FileDescriptor descriptor(uninterrupted([&] { return ::open(file.c_str(), flags); }));
    struct stat status = {};
    if (!descriptor.isOpen() || ::fstat(descriptor.number(), &status) != 0 ||
        !S_ISREG(status.st_mode) || status.st_size > limit) {
        return std::nullopt;
    }
    QByteArray content(status.st_size, Qt::Uninitialized);
    qint64 done = 0;
    while (done < content.size()) {
        const auto count = uninterrupted([&] {
            return ::read(descriptor.number(), content.data() + done,
                          static_cast<std::size_t>(content.size() - done));
        });
        if (count < 0) {
            return std::nullopt;
        }
        if (count == 0) {
            break; // somebody made it shorter meanwhile
        }
        done += count;
    }
    content.truncate(done);
    return content;
}
