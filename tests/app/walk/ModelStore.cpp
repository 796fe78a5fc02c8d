// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/ModelStore.h"

#include <utility>

static constexpr qint64 keptFor = 30 * 24 * 3600; // seconds

void ModelStore::begin(qint64 now)
{
    waiting.reset();
    unsaved.clear();
    isOpen = !isAway;
    if (isOpen) {
        std::erase_if(kept,
                      [now](const auto &entry) { return entry.second.savedAt < now - keptFor; });
    }
}

void ModelStore::saveSoon(const Snapshot &snapshot)
{
    if (waiting && waiting->uuid != snapshot.uuid) {
        saveWaiting();
    }
    waiting = snapshot;
}

void ModelStore::saveNow(const Snapshot &snapshot)
{
    dropWaiting(snapshot.uuid);
    save(snapshot);
}

void ModelStore::saveWaiting()
{
    if (const auto snapshot = std::exchange(waiting, std::nullopt)) {
        save(*snapshot);
    }
}

std::optional<ModelStore::Snapshot> ModelStore::load(const QString &uuid)
{
    if (waiting && waiting->uuid == uuid) {
        saveWaiting();
    }
    const auto found = kept.find(uuid);
    return works() && found != kept.end() ? std::optional(found->second) : std::nullopt;
}

void ModelStore::forget(const QString &uuid)
{
    dropWaiting(uuid);
    unsaved.erase(uuid);
    if (works()) {
        kept.erase(uuid);
    }
}

void ModelStore::save(const Snapshot &snapshot)
{
    if (works()) {
        kept[snapshot.uuid] = snapshot;
        unsaved.erase(snapshot.uuid);
    } else {
        unsaved.insert(snapshot.uuid);
    }
}

void ModelStore::dropWaiting(const QString &uuid)
{
    if (waiting && waiting->uuid == uuid) {
        waiting.reset();
    }
}
