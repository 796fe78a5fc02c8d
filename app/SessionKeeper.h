// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/store/SessionSnapshot.h"

#include <QDateTime>
#include <QFuture>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

class SessionStore;

/// Keeps the decisions on cards from one visit to the next, in the order in which it is told, on a
/// thread of its own: nobody waits for the disk. What cannot be saved or read is not an error.
/// Main thread only.
class SessionKeeper : public QObject {
    Q_OBJECT

public:
    /// Brings a snapshot of a moment that has passed; may be called on any thread, at any time. To
    /// spell out thousands of rejects takes a while, and most moments are never saved.
    using LateSnapshot = std::function<SessionSnapshot()>;

    struct Kept {
        std::optional<SessionSnapshot> snapshot = {};
        bool lastSaveFailed = false; ///< so that the snapshot, if any, is older than that save
    };

    /// Keeps the snapshots in @p folder; without one, or when it cannot be made, nothing is kept.
    /// A save waits until @p saveDelay has passed without a newer one.
    SessionKeeper(const std::optional<std::filesystem::path> &folder,
                  std::chrono::milliseconds saveDelay, QObject *parent = nullptr);
    ~SessionKeeper() override;

    /// Waits for what has been begun; a save that still waits is given up.
    void finish();

    /// Removes what was saved more than @p days days before @p now.
    void prune(int days, const QDateTime &now);

    /// In place of a save of the same card that still waits; one of another card is done at once.
    void saveSoon(const QString &volumeUUID, LateSnapshot snapshot);

    /// In place of a save of the same card that still waits.
    void saveNow(const SessionSnapshot &snapshot);

    /// A save of that card that still waits is done first. To be awaited: to block on it would take
    /// it out of the order.
    [[nodiscard]] QFuture<Kept> load(const QString &volumeUUID);

    /// Forgets what is kept for the card, also a save that still waits.
    void forget(const QString &volumeUUID);

private:
    class Desk;

    template<typename Work>
    auto enqueue(Work work);

    void saveWaiting();
    void dropWaiting(const QString &volumeUUID);
    void save(LateSnapshot snapshot);

    struct Waiting {
        QString volumeUUID;
        LateSnapshot snapshot;
    };

    std::shared_ptr<Desk> m_desk;
    std::optional<Waiting> m_waiting;
    QTimer m_delay{this};
    QThreadPool m_queue{this};
};
