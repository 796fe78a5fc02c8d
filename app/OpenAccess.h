// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardAccess.h"

#include <memory>

/// An access to a card that is open as long as this lives.
class OpenAccess {
public:
    OpenAccess(std::shared_ptr<CardAccess> access, std::filesystem::path url)
        : m_access(std::move(access))
        , m_url(std::move(url))
    {
    }

    OpenAccess(const OpenAccess &) = delete;
    OpenAccess &operator=(const OpenAccess &) = delete;

    ~OpenAccess() { m_access->stopAccess(m_url); }

    /// What was granted.
    [[nodiscard]] const std::filesystem::path &url() const { return m_url; }

    /// Where the files of the card are that is mounted at @p volumeURL.
    [[nodiscard]] std::filesystem::path root(const std::filesystem::path &volumeURL) const
    {
        return m_access->root(volumeURL, m_url);
    }

private:
    std::shared_ptr<CardAccess> m_access;
    std::filesystem::path m_url;
};
