// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/HeldCard.h"
#include "tests/app/walk/SharedWorld.h"

/// A card in memory, held as it was put in: once it has been pulled it is dead for good, whatever
/// is mounted at its place. Removals wait at the gate of their place.
class MemoryHeldCard final : public HeldCard {
public:
    using Path = std::filesystem::path;

    MemoryHeldCard(SharedWorld &world, std::string root, int life)
        : m_world(world)
        , m_root(std::move(root))
        , m_life(life)
    {
    }

    bool isAt(const Path &path) const override;
    std::shared_ptr<const CardMark> mark() const override;
    bool bears(const CardMark &mark) const override;
    Lookup lookUp(const Path &path) const override;
    void chooseWitness(const PathBytes &doomed) override;
    std::error_code proveAlive() override;
    std::error_code openFolder(const Path &folder) override;
    std::error_code remove(const Path &folder, const Path &name) override;
    std::error_code syncFolder(const Path &folder) override;
    void closeFolders() override;
    std::error_code syncAll() override;

private:
    [[nodiscard]] std::error_code removeNow(const std::string &file);

    SharedWorld &m_world;
    std::string m_root;
    int m_life;
};
