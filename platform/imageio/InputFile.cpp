// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

/// O_NOATIME is for the file's owner only; reading must not fail for want of it.
static FileDescriptor openForReading(const std::filesystem::path &path)
{
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    FileDescriptor descriptor(::open(path.c_str(), flags | O_NOATIME));
    if (!descriptor.isOpen() && errno == EPERM) {
        return FileDescriptor(::open(path.c_str(), flags));
    }
    return descriptor;
}

InputFile::InputFile(FileDescriptor descriptor, qint64 size)
    : m_descriptor(std::move(descriptor))
    , m_size(size)
{
}

std::optional<InputFile> InputFile::open(const std::filesystem::path &path)
{
    auto descriptor = openForReading(path);
    struct stat status = {};
    if (!descriptor.isOpen() || ::fstat(descriptor.number(), &status) != 0 ||
        !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return InputFile(std::move(descriptor), status.st_size);
}

void InputFile::setReadAhead(ReadAhead readAhead) const
{
    const int advice = readAhead == ReadAhead::None ? POSIX_FADV_RANDOM : POSIX_FADV_NORMAL;
    ::posix_fadvise(descriptor(), 0, 0, advice); // where it is not followed, it is only slower
}

qint64 InputFile::read(qint64 offset, char *target, qint64 length) const
{
    if (offset < 0 || offset >= m_size) {
        return 0;
    }
    const auto wanted = std::min(length, m_size - offset);
    qint64 done = 0;
    while (done < wanted) {
        const auto count =
            ::pread(descriptor(), target + done, static_cast<size_t>(wanted - done), offset + done);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        done += count;
    }
    return done;
}

QByteArray InputFile::bytes(qint64 offset, qint64 length) const
{
    const auto available = std::clamp<qint64>(m_size - offset, 0, length);
    if (offset < 0 || available == 0) {
        return {};
    }
    QByteArray result(available, Qt::Uninitialized);
    result.truncate(read(offset, result.data(), available));
    return result;
}
