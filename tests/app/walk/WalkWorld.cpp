// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/WalkWorld.h"

#include <algorithm>

const WalkWorld::Mount *WalkWorld::mountAt(const std::string &path) const
{
    const auto found = std::ranges::find(mounts, path, &Mount::path);
    return found != mounts.end() ? &*found : nullptr;
}

const WalkWorld::Mount *WalkWorld::mountOf(size_t card) const
{
    const auto found = std::ranges::find(mounts, card, &Mount::card);
    return found != mounts.end() ? &*found : nullptr;
}

bool WalkWorld::isAlive(int life) const
{
    return std::ranges::find(mounts, life, &Mount::life) != mounts.end();
}

bool WalkWorld::isClosed(const std::string &gate) const
{
    return closedGates.contains(gate);
}

std::optional<std::string> WalkWorld::resolved(const QString &uuid) const
{
    const auto place = bookmarks.find(uuid);
    if (place == bookmarks.end()) {
        return std::nullopt;
    }
    const auto *mount = mountAt(place->second);
    return mount && cards[mount->card].uuid == uuid ? std::optional(place->second) : std::nullopt;
}

QList<MountedVolume> WalkWorld::volumes() const
{
    QList<MountedVolume> volumes;
    for (const auto &mount : mounts) {
        const auto &card = cards[mount.card];
        volumes.append({.mountPoint = mount.path,
                        .uuid = card.uuid,
                        .label = card.label,
                        .isRemovable = !card.isFixed,
                        .isEjectable = !card.isFixed});
    }
    return volumes;
}

void WalkWorld::mount(const std::string &path, size_t card)
{
    mounts.push_back({.path = path, .card = card, .life = ++lives});
}

void WalkWorld::unmount(const std::string &path)
{
    std::erase_if(mounts, [&](const Mount &mount) { return mount.path == path; });
}

void WalkWorld::blink(const std::string &path)
{
    std::ranges::find(mounts, path, &Mount::path)->life = ++lives;
}
