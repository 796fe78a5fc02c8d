// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/FileManager.h"
#include "tests/app/walk/SharedWorld.h"

/// The files of the cards in memory. Listings wait at the scan's gate of their card.
class MemoryFiles final : public FileManager {
public:
    using Path = std::filesystem::path;

    explicit MemoryFiles(SharedWorld &world)
        : m_world(world)
    {
    }

    std::vector<Path> regularFilesBelow(const Path &folder) const override;
    std::optional<EntryKind> kindOf(const Path &path) const override;
    bool isListable(const Path &folder) const override;
    Path resolvingSymlinks(const Path &path) const override;
    bool isLink(const Path &path) const override;
    std::optional<qint64> fileSize(const Path &path) const override;
    bool isReadOnly(const Path &folder) const override;
    std::unique_ptr<HeldCard> hold(const Path &root, std::error_code &error) const override;

    /// The number of the file at @p path; absent when there is none.
    [[nodiscard]] std::optional<int> numberOf(const Path &path) const;

private:
    SharedWorld &m_world;
};
