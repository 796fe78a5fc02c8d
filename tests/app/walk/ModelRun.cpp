// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/ModelRun.h"

#include <algorithm>

ModelRun::ModelRun(std::string cardPath, int scannedLife,
                   std::vector<ModelSession::Item> rejectedItems, qint64 kept)
    : path(std::move(cardPath))
    , rejects(std::move(rejectedItems))
    , keptCount(kept)
    , m_scannedLife(scannedLife)
{
    for (const auto &item : rejects) {
        files.insert(files.end(), item.files.begin(), item.files.end());
    }
    outcomes.resize(files.size(), Outcome::Pending);
}

bool ModelRun::goOn(WalkWorld &world, int passes)
{
    if (!m_hasBegun) {
        m_hasBegun = true;
        const auto *mount = world.mountAt(path);
        m_life = mount && mount->life == m_scannedLife ? m_scannedLife : 0;
    }
    for (; done < files.size(); ++done) {
        auto &outcome = outcomes[done];
        auto *card = heldCard(world);
        const auto file = belowDcim(files[done]);
        if (!m_isAtGate && (isStopped || !card)) {
            outcome = Outcome::Failed;
            continue;
        }
        if (!m_isAtGate && !card->files.contains(file)) {
            outcome = Outcome::NotFound;
            continue;
        }
        if (world.isClosed(WalkGate::removal(path)) && passes-- <= 0) {
            m_isAtGate = true;
            return false;
        }
        m_isAtGate = false;
        const bool canRemove = card && !card->isReadOnly && !card->stuckFiles.contains(file);
        outcome = canRemove ? Outcome::Removed : Outcome::Failed;
        if (canRemove) {
            card->files.erase(file);
        }
    }
    bringOntoMedium(world);
    return true;
}

void ModelRun::bringOntoMedium(WalkWorld &world)
{
    const auto *card = heldCard(world);
    if (!card || card->syncFails) {
        std::ranges::fill(outcomes, Outcome::Failed);
    }
}

qint64 ModelRun::removedCount() const
{
    return std::ranges::count(outcomes, Outcome::Removed);
}

qint64 ModelRun::failedCount() const
{
    return static_cast<qint64>(outcomes.size()) - removedCount();
}

std::set<QString> ModelRun::failedIDs() const
{
    std::set<QString> ids;
    auto outcome = outcomes.begin();
    for (const auto &item : rejects) {
        for (size_t file = 0; file < item.files.size(); ++file) {
            if (*outcome++ == Outcome::Failed) {
                ids.insert(item.id);
            }
        }
    }
    return ids;
}

WalkCard *ModelRun::heldCard(WalkWorld &world) const
{
    const auto mount = std::ranges::find(world.mounts, m_life, &WalkWorld::Mount::life);
    return mount != world.mounts.end() ? &world.cards[mount->card] : nullptr;
}

std::string ModelRun::belowDcim(const std::string &file) const
{
    return file.substr((path + "/DCIM/").size());
}
