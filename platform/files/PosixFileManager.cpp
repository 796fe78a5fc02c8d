// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/PosixFileManager.h"

#include "platform/files/FileDescriptor.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>

namespace {

struct DirectoryCloser {
    void operator()(DIR *directory) const { ::closedir(directory); }
};

using Directory = std::unique_ptr<DIR, DirectoryCloser>;

struct Entry {
    std::string name;
    unsigned char type;
};

/// Deeper trees are no camera's; the limit keeps recursion and descriptors bounded.
constexpr int deepestFolder = 64;

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

bool isPackage(std::string_view name)
{
    constexpr std::array<std::string_view, 4> extensions = {".app", ".bundle", ".framework",
                                                            ".photoslibrary"};
    return std::ranges::any_of(extensions, [name](std::string_view extension) {
        return name.size() > extension.size() &&
               std::ranges::equal(
                   name.substr(name.size() - extension.size()), extension,
                   [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
    });
}

/// Opens a subfolder for reading, without touching its access time where that is allowed.
FileDescriptor openFolder(int parent, const char *name, int flags = folderFlags)
{
    FileDescriptor folder(::openat(parent, name, flags | O_NOATIME));
    if (!folder.isOpen() && errno == EPERM) {
        folder = FileDescriptor(::openat(parent, name, flags));
    }
    return folder;
}

unsigned char typeOf(int folder, const std::string &name)
{
    struct stat status = {};
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return DT_UNKNOWN;
    }
    return S_ISREG(status.st_mode) ? DT_REG : S_ISDIR(status.st_mode) ? DT_DIR : DT_UNKNOWN;
}

std::vector<Entry> visibleEntries(DIR *directory)
{
    std::vector<Entry> entries;
    while (const dirent *entry = ::readdir(directory)) {
        if (entry->d_name[0] != '.') {
            entries.push_back({entry->d_name, entry->d_type});
        }
    }
    std::ranges::sort(entries, {}, &Entry::name);
    return entries;
}

void appendFiles(FileDescriptor folder, dev_t device, const std::filesystem::path &path, int depth,
                 std::vector<std::filesystem::path> &files)
{
    struct stat status = {};
    if (::fstat(folder.number(), &status) != 0 || status.st_dev != device) {
        return;
    }
    const int number = folder.number();
    const Directory directory(::fdopendir(number));
    if (!directory) {
        return;
    }
    (void)folder.release(); // the directory stream closes it from here on

    for (const Entry &entry : visibleEntries(directory.get())) {
        const auto type = entry.type == DT_UNKNOWN ? typeOf(number, entry.name) : entry.type;
        if (type == DT_REG) {
            files.push_back(path / entry.name);
        } else if (type == DT_DIR && depth < deepestFolder && !isPackage(entry.name)) {
            auto subfolder = openFolder(number, entry.name.c_str());
            if (subfolder.isOpen()) {
                appendFiles(std::move(subfolder), device, path / entry.name, depth + 1, files);
            }
        }
    }
}

} // namespace

std::vector<std::filesystem::path>
PosixFileManager::regularFilesBelow(const std::filesystem::path &folder) const
{
    std::vector<std::filesystem::path> files;
    auto descriptor = openFolder(AT_FDCWD, folder.c_str());
    struct stat status = {};
    if (descriptor.isOpen() && ::fstat(descriptor.number(), &status) == 0) {
        appendFiles(std::move(descriptor), status.st_dev, folder, 0, files);
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
    auto descriptor = openFolder(AT_FDCWD, folder.c_str(), folderFlags & ~O_NOFOLLOW);
    const Directory directory(descriptor.isOpen() ? ::fdopendir(descriptor.number()) : nullptr);
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

std::optional<qint64> PosixFileManager::fileSize(const std::filesystem::path &path) const
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return status.st_size;
}

std::error_code PosixFileManager::remove(const std::filesystem::path &path)
{
    // Through the parent's descriptor and by name, so that a directory is never removed and a link
    // is removed itself.
    const auto parent = path.parent_path();
    const FileDescriptor folder(::open(parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen() || ::unlinkat(folder.number(), path.filename().c_str(), 0) != 0) {
        return lastError();
    }
    return {};
}

std::error_code PosixFileManager::syncFolder(const std::filesystem::path &folder)
{
    const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor.isOpen() || ::fsync(descriptor.number()) != 0) {
        return lastError();
    }
    return {};
}
