// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/OpenBeneath.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

/// openat2(2) gives up when something is renamed meanwhile; more often than this is no accident.
constexpr int attempts = 8;

static FileDescriptor openInOneStep(int root, const char *path, int flags)
{
    open_how how = {};
    how.flags = static_cast<__u64>(flags) | O_CLOEXEC;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS | RESOLVE_NO_MAGICLINKS | RESOLVE_NO_XDEV;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const auto number = ::syscall(SYS_openat2, root, path, &how, sizeof(how));
        if (number >= 0 || errno != EAGAIN) {
            return FileDescriptor(static_cast<int>(number));
        }
    }
    return FileDescriptor();
}

static bool isOnDevice(int descriptor, dev_t device)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && status.st_dev == device;
}

/// For kernels before 5.6 and sandboxes that forbid openat2.
static FileDescriptor openStepByStep(int root, const std::filesystem::path &relative, int flags)
{
    struct stat status = {};
    FileDescriptor folder(::openat(root, ".", O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen() || ::fstat(folder.number(), &status) != 0) {
        return FileDescriptor();
    }
    const auto names = relative.empty() ? std::filesystem::path(".") : relative;
    for (auto name = names.begin(); name != names.end(); ++name) {
        if (*name == ".." || name->is_absolute()) {
            errno = EXDEV;
            return FileDescriptor();
        }
        const bool isLast = std::next(name) == names.end();
        const int step = isLast ? flags : O_PATH | O_DIRECTORY;
        FileDescriptor next(
            ::openat(folder.number(), name->c_str(), step | O_NOFOLLOW | O_CLOEXEC));
        if (!next.isOpen()) {
            return next;
        }
        if (!isOnDevice(next.number(), status.st_dev)) {
            errno = EXDEV;
            return FileDescriptor();
        }
        folder = std::move(next);
    }
    return folder;
}

FileDescriptor openBeneath(int root, const std::filesystem::path &relative, int flags)
{
    auto descriptor = openInOneStep(root, relative.empty() ? "." : relative.c_str(), flags);
    if (!descriptor.isOpen() && (errno == ENOSYS || errno == EPERM)) {
        descriptor = openStepByStep(root, relative, flags);
    }
    return descriptor;
}

FileDescriptor openBeneathForReading(int root, const std::filesystem::path &relative, int flags)
{
    auto descriptor = openBeneath(root, relative, flags | O_RDONLY | O_NOATIME);
    if (!descriptor.isOpen() && errno == EPERM) {
        descriptor = openBeneath(root, relative, flags | O_RDONLY);
    }
    return descriptor;
}
