// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/PosixFileManager.h"

#include "platform/files/DirectoryStream.h"
#include "platform/files/FileDescriptor.h"
#include "platform/files/FolderWalk.h"
#include "platform/files/PosixHeldCard.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <cerrno>

/// Opens @p folder for reading, without touching its access time where that is allowed.
static FileDescriptor openFolder(const std::filesystem::path &folder, int flags = 0)
{
    const int all = flags | O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    FileDescriptor descriptor(::open(folder.c_str(), all | O_NOATIME));
    if (!descriptor.isOpen() && errno == EPERM) {
        descriptor = FileDescriptor(::open(folder.c_str(), all));
    }
    return descriptor;
}

std::vector<std::filesystem::path>
PosixFileManager::regularFilesBelow(const std::filesystem::path &folder) const
{
    std::vector<std::filesystem::path> files;
    const auto descriptor = openFolder(folder, O_NOFOLLOW);
    if (descriptor.isOpen()) {
        FolderWalk::regularFiles(descriptor.number(), folder, [&files](const auto &path) {
            files.push_back(path);
            return true;
        });
    }
    return files;
}

std::optional<FileManager::EntryKind>
PosixFileManager::kindOf(const std::filesystem::path &path) const
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return S_ISDIR(status.st_mode) ? EntryKind::Directory : EntryKind::Other;
}

bool PosixFileManager::isListable(const std::filesystem::path &folder) const
{
    auto descriptor = openFolder(folder);
    if (!descriptor.isOpen()) {
        return false;
    }
    const DirectoryStream directory(::fdopendir(descriptor.number()));
    if (!directory) {
        return false;
    }
    (void)descriptor.release(); // the directory stream closes it from here on
    errno = 0;
    return ::readdir(directory.get()) != nullptr || errno == 0;
}

std::filesystem::path PosixFileManager::resolvingSymlinks(const std::filesystem::path &path) const
{
    std::error_code error;
    auto resolved =
        std::filesystem::weakly_canonical(std::filesystem::absolute(path, error), error);
    if (error) {
        resolved = path.lexically_normal(); // a loop of links, say: the checks judge it as written
    }
    // A trailing separator shows as an empty last component.
    return resolved.has_filename() || !resolved.has_relative_path() ? resolved
                                                                    : resolved.parent_path();
}

bool PosixFileManager::isLink(const std::filesystem::path &path) const
{
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

std::optional<qint64> PosixFileManager::fileSize(const std::filesystem::path &path) const
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return status.st_size;
}

bool PosixFileManager::isReadOnly(const std::filesystem::path &folder) const
{
    struct statvfs status = {};
    return ::statvfs(folder.c_str(), &status) == 0 && (status.f_flag & ST_RDONLY) != 0;
}

std::unique_ptr<HeldCard> PosixFileManager::hold(const std::filesystem::path &root,
                                                 std::error_code &error) const
{
    auto descriptor = PosixHeldCard::openRoot(root, error);
    return descriptor.isOpen() ? std::make_unique<PosixHeldCard>(std::move(descriptor)) : nullptr;
}
