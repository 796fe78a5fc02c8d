// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/SessionKeeper.h"

#include "core/store/SessionStore.h"

#include <QSet>
#include <QtConcurrent/qtconcurrentrun.h>

#include <system_error>
#include <utility>

/// What the queue works with. Only the queue's thread touches it.
class SessionKeeper::Desk {
public:
    void open(const std::filesystem::path &folder)
    {
        try {
            m_store.emplace(folder);
        } catch (const std::system_error &) {
            // Culling goes on without; nothing outlives this visit then.
        }
    }

    void save(const SessionSnapshot &snapshot)
    {
        m_unsaved.insert(snapshot.volumeUUID);
        try {
            if (m_store) {
                m_store->save(snapshot);
                m_unsaved.remove(snapshot.volumeUUID);
            }
        } catch (const std::system_error &) {
            // Told by the next load.
        }
    }

    [[nodiscard]] Kept load(const QString &volumeUUID) const
    {
        return {.snapshot = m_store ? m_store->load(volumeUUID) : std::nullopt,
                .lastSaveFailed = m_unsaved.contains(volumeUUID)};
    }

    void forget(const QString &volumeUUID)
    {
        m_unsaved.remove(volumeUUID);
        if (m_store) {
            m_store->deleteSnapshot(volumeUUID);
        }
    }

    void prune(int days, const QDateTime &now) const
    {
        if (m_store) {
            m_store->prune(days, now);
        }
    }

private:
    std::optional<SessionStore> m_store;
    QSet<QString> m_unsaved; ///< cards whose last save failed
};

template<typename Work>
auto SessionKeeper::enqueue(Work work)
{
    return QtConcurrent::run(&m_queue,
                             [desk = m_desk, work = std::move(work)] { return work(*desk); });
}

SessionKeeper::SessionKeeper(const std::optional<std::filesystem::path> &folder,
                             std::chrono::milliseconds saveDelay, QObject *parent)
    : QObject(parent)
    , m_desk(std::make_shared<Desk>())
{
    m_queue.setMaxThreadCount(1); // what makes it a queue
    m_delay.setSingleShot(true);
    m_delay.setTimerType(Qt::PreciseTimer);
    m_delay.setInterval(saveDelay);
    connect(&m_delay, &QTimer::timeout, this, &SessionKeeper::saveWaiting);
    if (folder) {
        enqueue([folder = *folder](Desk &desk) { desk.open(folder); });
    }
}

SessionKeeper::~SessionKeeper()
{
    finish();
}

void SessionKeeper::finish()
{
    m_delay.stop();
    m_waiting.reset();
    m_queue.waitForDone();
}

void SessionKeeper::prune(int days, const QDateTime &now)
{
    enqueue([days, now](Desk &desk) { desk.prune(days, now); });
}

void SessionKeeper::saveSoon(const QString &volumeUUID, LateSnapshot snapshot)
{
    if (m_waiting && m_waiting->volumeUUID != volumeUUID) {
        saveWaiting();
    }
    m_waiting = {.volumeUUID = volumeUUID, .snapshot = std::move(snapshot)};
    m_delay.start();
}

void SessionKeeper::saveNow(const SessionSnapshot &snapshot)
{
    dropWaiting(snapshot.volumeUUID);
    save([snapshot] { return snapshot; });
}

QFuture<SessionKeeper::Kept> SessionKeeper::load(const QString &volumeUUID)
{
    if (m_waiting && m_waiting->volumeUUID == volumeUUID) {
        saveWaiting();
    }
    return enqueue([volumeUUID](Desk &desk) { return desk.load(volumeUUID); });
}

void SessionKeeper::forget(const QString &volumeUUID)
{
    dropWaiting(volumeUUID);
    enqueue([volumeUUID](Desk &desk) { desk.forget(volumeUUID); });
}

void SessionKeeper::saveWaiting()
{
    m_delay.stop();
    if (auto waiting = std::exchange(m_waiting, std::nullopt)) {
        save(std::move(waiting->snapshot));
    }
}

void SessionKeeper::dropWaiting(const QString &volumeUUID)
{
    if (m_waiting && m_waiting->volumeUUID == volumeUUID) {
        m_delay.stop();
        m_waiting.reset();
    }
}

void SessionKeeper::save(LateSnapshot snapshot)
{
    enqueue([snapshot = std::move(snapshot)](Desk &desk) { desk.save(snapshot()); });
}
