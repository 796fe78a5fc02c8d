// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardAccess.h"

#include <map>
#include <mutex>
#include <set>

/// Access as a test says: every folder is readable but the closed ones.
class FakeAccess final : public CardAccess {
public:
    [[nodiscard]] bool isReadable(const std::filesystem::path &url) const override
    {
        const std::scoped_lock lock(m_mutex);
        return !closed.contains(url);
    }

    [[nodiscard]] std::optional<std::filesystem::path>
    resolveBookmark(const QString &volumeUUID) override
    {
        const std::scoped_lock lock(m_mutex);
        const auto found = bookmarks.find(volumeUUID);
        return found != bookmarks.end() ? std::optional(found->second) : std::nullopt;
    }

    void saveBookmark(const std::filesystem::path &url, const QString &volumeUUID) override
    {
        const std::scoped_lock lock(m_mutex);
        bookmarks[volumeUUID] = url;
    }

    [[nodiscard]] std::optional<std::filesystem::path>
    requestAccess(const std::filesystem::path &directory, const QString & /*name*/) override
    {
        const std::scoped_lock lock(m_mutex);
        return refuses ? std::nullopt : std::optional(directory);
    }

    void stopAccess(const std::filesystem::path &url) override
    {
        const std::scoped_lock lock(m_mutex);
        stopped.push_back(url);
    }

    std::set<std::filesystem::path> closed;
    std::map<QString, std::filesystem::path> bookmarks;
    std::vector<std::filesystem::path> stopped;
    bool refuses = false;

private:
    mutable std::mutex m_mutex;
};
