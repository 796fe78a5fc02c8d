// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/FileDescriptor.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>

/// A regular file in memory alone, for what takes a path. Ends the program where there can be none.
class MemoryFile {
public:
    MemoryFile();

    /// Gives the file this content and no other.
    void fill(const uint8_t *data, size_t size);

    /// Good for as long as this lives.
    [[nodiscard]] const std::filesystem::path &path() const { return m_path; }

private:
    FileDescriptor m_descriptor;
    std::filesystem::path m_path;
};
