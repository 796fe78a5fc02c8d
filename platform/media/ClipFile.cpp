// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/ClipFile.h"

#include <utility>

ClipFile::ClipFile(const std::filesystem::path &path)
{
    if (auto file = InputFile::open(path)) {
        m_file = std::make_shared<const InputFile>(std::move(*file));
    }
}

std::shared_ptr<const InputFile> ClipFile::file() const
{
    const std::lock_guard lock(m_mutex);
    return m_file;
}

std::optional<qint64> ClipFile::read(qint64 position, char *target, qint64 length) const
{
    const auto opened = file();
    if (!opened) {
        return std::nullopt;
    }
    const auto count = opened->read(position, target, length);
    const bool isAtEnd = position >= opened->size();
    return count > 0 || length == 0 || isAtEnd ? std::optional(count) : std::nullopt;
}

void ClipFile::close()
{
    std::shared_ptr<const InputFile> file; // goes after the lock
    {
        const std::lock_guard lock(m_mutex);
        file.swap(m_file);
    }
}
