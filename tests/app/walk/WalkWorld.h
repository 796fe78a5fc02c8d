// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/MountedVolume.h"
#include "tests/app/walk/WalkCard.h"

#include <QList>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The facts around the controller: cards, where they are mounted, which grants are stored, who has
/// to wait. A plain value; the fakes have one and the model has another.
struct WalkWorld {
    struct Mount {
        std::string path = {};
        size_t card = 0;
        int life = 0; ///< another one each time a card is put in

        bool operator==(const Mount &) const = default;
    };

    std::vector<WalkCard> cards = {};
    std::vector<Mount> mounts = {};
    std::map<QString, std::string> bookmarks = {}; ///< places by UUID
    bool userRefuses = false;
    std::set<std::string> closedGates = {};
    int lives = 0;

    bool operator==(const WalkWorld &) const = default;

    [[nodiscard]] const Mount *mountAt(const std::string &path) const;
    [[nodiscard]] const Mount *mountOf(size_t card) const;
    [[nodiscard]] bool isAlive(int life) const;
    [[nodiscard]] bool isClosed(const std::string &gate) const;
    /// Where the grant for the volume leads to, when the volume is there.
    [[nodiscard]] std::optional<std::string> resolved(const QString &uuid) const;
    [[nodiscard]] QList<MountedVolume> volumes() const;

    void mount(const std::string &path, size_t card);
    void unmount(const std::string &path);
    /// The card is pulled and put in again, so fast that nobody notices.
    void blink(const std::string &path);
};

/// The names of the gates at which threads are made to wait.
namespace WalkGate {

[[nodiscard]] inline std::string probe(const std::string &path)
{
    return "probe " + path;
}

[[nodiscard]] inline std::string scan(const std::string &path)
{
    return "scan " + path;
}

[[nodiscard]] inline std::string removal(const std::string &path)
{
    return "removal " + path;
}

[[nodiscard]] inline std::string dialog()
{
    return "dialog";
}

} // namespace WalkGate
