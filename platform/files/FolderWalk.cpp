// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FolderWalk.h"

#include "platform/files/OpenBeneath.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct DirectoryCloser {
    void operator()(DIR *directory) const { ::closedir(directory); }
};

using Directory = std::unique_ptr<DIR, DirectoryCloser>;

struct Entry {
    std::string name;
    unsigned char type;
};

/// A folder whose entries are being visited; it is not kept open meanwhile, so that no depth uses
/// up the descriptors.
struct Level {
    std::filesystem::path path;
    std::vector<Entry> entries;
    size_t next = 0;
};

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

/// For file systems that do not tell the type with the name.
unsigned char typeOf(int folder, const std::string &name)
{
    struct stat status = {};
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return DT_UNKNOWN;
    }
    return S_ISREG(status.st_mode) ? DT_REG : S_ISDIR(status.st_mode) ? DT_DIR : DT_UNKNOWN;
}

/// The visible files and folders in byte order of their names.
std::vector<Entry> entriesOf(FileDescriptor folder)
{
    const int number = folder.number();
    const Directory directory(::fdopendir(number));
    if (!directory) {
        return {};
    }
    (void)folder.release(); // the directory stream closes it from here on

    std::vector<Entry> entries;
    while (const dirent *entry = ::readdir(directory.get())) {
        if (entry->d_name[0] == '.') {
            continue;
        }
        const auto type =
            entry->d_type == DT_UNKNOWN ? typeOf(number, entry->d_name) : entry->d_type;
        if (type == DT_REG || type == DT_DIR) {
            entries.push_back({entry->d_name, type});
        }
    }
    std::ranges::sort(entries, {}, &Entry::name);
    return entries;
}

std::optional<Level> levelAt(int root, const std::filesystem::path &path)
{
    auto folder = openBeneathForReading(root, path, O_DIRECTORY);
    if (!folder.isOpen()) {
        return std::nullopt;
    }
    return Level{path, entriesOf(std::move(folder))};
}

} // namespace

void FolderWalk::regularFiles(int folder, const Visit &visit)
{
    std::vector<Level> levels;
    if (auto top = levelAt(folder, {})) {
        levels.push_back(std::move(*top));
    }
    while (!levels.empty()) {
        auto &level = levels.back();
        if (level.next == level.entries.size()) {
            levels.pop_back();
            continue;
        }
        const auto &entry = level.entries[level.next++];
        const auto path = level.path / entry.name;
        if (entry.type == DT_REG) {
            if (!visit(path)) {
                return;
            }
        } else if (!isPackage(entry.name)) {
            if (auto below = levelAt(folder, path)) {
                levels.push_back(std::move(*below));
            }
        }
    }
}
