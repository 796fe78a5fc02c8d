// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardAccess.h"

#include <memory>

/// An access to a card that is open as long as this lives.
class OpenAccess {
public:
    /// To @p url, for the card that is mounted at @p volumeURL. Blocks on the card.
    OpenAccess(std::shared_ptr<CardAccess> access, std::filesystem::path url,
               const std::filesystem::path &volumeURL)
        : m_access(std::move(access))
        , m_url(std::move(url))
        , m_root(m_access->root(volumeURL, m_url))
    {
    }

    OpenAccess(const OpenAccess &) = delete;
    OpenAccess &operator=(const OpenAccess &) = delete;

    ~OpenAccess() { m_access->stopAccess(m_url); }

    /// What was granted.
    [[nodiscard]] const std::filesystem::path &url() const { return m_url; }

    /// Where the files of the card are.
    [[nodiscard]] const std::filesystem::path &root() const { return m_root; }

private:
    std::shared_ptr<CardAccess> m_access;
    std::filesystem::path m_url;
    std::filesystem::path m_root;
};
