// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardAccess.h"
#include "tests/app/walk/SharedWorld.h"

/// Access to the cards in memory. Questions wait at the probe's gate of their place.
class MemoryAccess final : public CardAccess {
public:
    explicit MemoryAccess(SharedWorld &world)
        : m_world(world)
    {
    }

    [[nodiscard]] bool isReadable(const std::filesystem::path &url) const override
    {
        m_world.touchCard();
        m_world.pass(WalkGate::probe(url.native()));
        return m_world.read([&](const WalkWorld &facts) {
            const auto *mount = facts.mountAt(url.native());
            return mount && !facts.cards[mount->card].isClosed;
        });
    }

    [[nodiscard]] std::optional<std::filesystem::path>
    resolveBookmark(const QString &volumeUUID) override
    {
        m_world.touchCard();
        const auto place =
            m_world.read([&](const WalkWorld &facts) { return facts.resolved(volumeUUID); });
        if (place) {
            m_world.beginAccess(*place);
        }
        return place;
    }

    void saveBookmark(const std::filesystem::path &url, const QString &volumeUUID) override
    {
        m_world.change([&](WalkWorld &facts) { facts.bookmarks[volumeUUID] = url.native(); });
    }

    [[nodiscard]] std::filesystem::path
    root(const std::filesystem::path &volumeURL,
         const std::filesystem::path & /*granted*/) const override
    {
        return volumeURL;
    }

    void stopAccess(const std::filesystem::path &url) override { m_world.endAccess(url.native()); }

private:
    SharedWorld &m_world;
};
