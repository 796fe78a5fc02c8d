// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardAccess.h"

#include <atomic>
#include <condition_variable>
#include <map>
#include <mutex>
#include <set>

/// Access as a test says: every folder is readable but the closed ones.
class FakeAccess final : public CardAccess {
public:
    [[nodiscard]] bool isReadable(const std::filesystem::path &url) const override
    {
        ++asked;
        std::unique_lock lock(m_mutex);
        m_letGo.wait(lock, [&] { return !m_held.contains(url); });
        return !closed.contains(url);
    }

    /// The card at @p url answers nobody until it is let go.
    void hold(const std::filesystem::path &url)
    {
        const std::scoped_lock lock(m_mutex);
        m_held.insert(url);
    }

    void letGo(const std::filesystem::path &url)
    {
        const std::scoped_lock lock(m_mutex);
        m_held.erase(url);
        m_letGo.notify_all();
    }

    void letAllGo()
    {
        const std::scoped_lock lock(m_mutex);
        m_held.clear();
        m_letGo.notify_all();
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

    [[nodiscard]] std::filesystem::path root(const std::filesystem::path &volumeURL,
                                             const std::filesystem::path &granted) const override
    {
        std::unique_lock lock(m_mutex);
        m_letGo.wait(lock, [&] { return !m_held.contains(volumeURL); });
        return grantsLead ? granted : volumeURL;
    }

    void stopAccess(const std::filesystem::path &url) override
    {
        const std::scoped_lock lock(m_mutex);
        m_stopped.push_back(url);
    }

    /// How many accesses have been ended.
    [[nodiscard]] size_t stopCount() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_stopped.size();
    }

    std::set<std::filesystem::path> closed;
    std::map<QString, std::filesystem::path> bookmarks;
    bool grantsLead = false;           ///< to the files of the card, as in a sandbox
    mutable std::atomic_int asked = 0; ///< how often a card was asked whether it is readable

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_letGo;
    std::set<std::filesystem::path> m_held;
    std::vector<std::filesystem::path> m_stopped;
};
