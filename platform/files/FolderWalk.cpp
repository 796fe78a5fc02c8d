// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FolderWalk.h"

#include "platform/files/DirectoryStream.h"
#include "platform/files/OpenBeneath.h"

#include <QtEndian>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// The entries of a folder, with all names in one piece of memory: a string for each would take as
/// long as reading the folder.
class Listing {
public:
    struct Entry {
        quint64 head; ///< the first bytes of the name, so that numbers compare as names do
        size_t nameAt;
        unsigned char type;
    };

    void add(const char *name, unsigned char type)
    {
        m_entries.push_back({headOf(name), m_names.size(), type});
        m_names.append(name, std::strlen(name) + 1);
    }

    void sortByNames()
    {
        std::ranges::sort(m_entries, [this](const Entry &a, const Entry &b) {
            return a.head != b.head ? a.head < b.head : std::strcmp(name(a), name(b)) < 0;
        });
    }

    [[nodiscard]] const std::vector<Entry> &entries() const { return m_entries; }
    [[nodiscard]] const char *name(const Entry &entry) const
    {
        return m_names.data() + entry.nameAt;
    }

private:
    static quint64 headOf(const char *name)
    {
        std::array<char, sizeof(quint64)> bytes = {};
        std::memcpy(bytes.data(), name, ::strnlen(name, bytes.size()));
        return qFromBigEndian<quint64>(bytes.data());
    }

    std::string m_names;
    std::vector<Entry> m_entries;
};

/// A folder whose entries are being visited; it is not kept open meanwhile, so that no depth uses
/// up the descriptors.
struct Level {
    std::filesystem::path path;  ///< relative to the folder of the walk
    std::filesystem::path shown; ///< of the entry in hand, as it is told
    Listing listing;
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
unsigned char typeOf(int folder, const char *name)
{
    struct stat status = {};
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return DT_UNKNOWN;
    }
    return S_ISREG(status.st_mode) ? DT_REG : S_ISDIR(status.st_mode) ? DT_DIR : DT_UNKNOWN;
}

/// The visible files and folders in byte order of their names.
Listing entriesOf(FileDescriptor folder)
{
    const int number = folder.number();
    const DirectoryStream directory(::fdopendir(number));
    if (!directory) {
        return {};
    }
    (void)folder.release(); // the directory stream closes it from here on

    Listing listing;
    while (const dirent *entry = ::readdir(directory.get())) {
        if (entry->d_name[0] == '.') {
            continue;
        }
        const auto type =
            entry->d_type == DT_UNKNOWN ? typeOf(number, entry->d_name) : entry->d_type;
        if (type == DT_REG || type == DT_DIR) {
            listing.add(entry->d_name, type);
        }
    }
    listing.sortByNames();
    return listing;
}

std::optional<Level> levelAt(int root, const std::filesystem::path &path,
                             const std::filesystem::path &shown)
{
    auto folder = openBeneathForReading(root, path, O_DIRECTORY);
    if (!folder.isOpen()) {
        return std::nullopt;
    }
    return Level{.path = path, .shown = shown / "", .listing = entriesOf(std::move(folder))};
}

} // namespace

void FolderWalk::regularFiles(int folder, const std::filesystem::path &shown, const Visit &visit)
{
    std::vector<Level> levels;
    if (auto top = levelAt(folder, {}, shown)) {
        levels.push_back(std::move(*top));
    }
    while (!levels.empty()) {
        auto &level = levels.back();
        if (level.next == level.listing.entries().size()) {
            levels.pop_back();
            continue;
        }
        const auto &entry = level.listing.entries()[level.next++];
        const std::string_view name = level.listing.name(entry);
        level.shown.replace_filename(name); // half as dear as putting a path together anew
        if (entry.type == DT_REG) {
            if (!visit(level.shown)) {
                return;
            }
        } else if (!isPackage(name)) {
            if (auto below = levelAt(folder, level.path / name, level.shown)) {
                levels.push_back(std::move(*below));
            }
        }
    }
}
