// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <map>
#include <optional>
#include <set>

/// What should be kept of the decisions: on the disk, and on its way there.
struct ModelStore {
    struct Snapshot {
        QString uuid = {};
        QString inventoryHash = {};
        std::set<QString> rejected = {};
        qint64 index = 0;
        qint64 savedAt = 0; ///< seconds since the epoch

        bool operator==(const Snapshot &) const = default;
    };

    std::map<QString, Snapshot> kept = {}; ///< on the disk, by UUID
    bool isAway = false;                   ///< the folder cannot be reached
    bool isOpen = false;                   ///< it could be reached when the controller began
    std::optional<Snapshot> waiting = {};  ///< for the delay to pass
    std::set<QString> unsaved = {};        ///< cards whose last save failed

    /// Of a controller that begins at @p now; what waited is lost.
    void begin(qint64 now);

    void saveSoon(const Snapshot &snapshot);
    void saveNow(const Snapshot &snapshot);
    /// The delay has passed.
    void saveWaiting();
    [[nodiscard]] std::optional<Snapshot> load(const QString &uuid);
    void forget(const QString &uuid);

private:
    void save(const Snapshot &snapshot);
    void dropWaiting(const QString &uuid);

    [[nodiscard]] bool works() const { return isOpen && !isAway; }
};
