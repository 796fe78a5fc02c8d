// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <filesystem>

/// What this process holds, as the system tells.
namespace OpenFiles {

/// How many descriptors lead to @p path.
[[nodiscard]] inline int countOf(const std::filesystem::path &path)
{
    std::error_code error;
    const auto wanted = std::filesystem::canonical(path, error);
    int count = 0;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
        std::error_code gone;
        count += std::filesystem::read_symlink(entry.path(), gone) == wanted ? 1 : 0;
    }
    return count;
}

[[nodiscard]] inline int entries(const char *folder)
{
    std::error_code error;
    int count = 0;
    for (const auto &entry : std::filesystem::directory_iterator(folder, error)) {
        (void)entry;
        ++count;
    }
    return count;
}

[[nodiscard]] inline int descriptors()
{
    return entries("/proc/self/fd");
}

[[nodiscard]] inline int threads()
{
    return entries("/proc/self/task");
}

} // namespace OpenFiles
