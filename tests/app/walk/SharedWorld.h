// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/app/walk/WalkWorld.h"

#include <QStringList>

#include <condition_variable>
#include <map>
#include <mutex>
#include <set>
#include <string>

/// The world as the fakes share it between threads: the facts, the gates, and a record of what must
/// not happen.
class SharedWorld {
public:
    template<typename Reader>
    auto read(Reader reader) const
    {
        const std::scoped_lock lock(m_mutex);
        return reader(m_facts);
    }

    template<typename Change>
    auto change(Change change)
    {
        const std::scoped_lock lock(m_mutex);
        return change(m_facts);
    }

    [[nodiscard]] WalkWorld facts() const;

    /// Until release() nothing is answered, closed gates or not: so that an event of several parts
    /// is over before its first answer, as it would be by chance otherwise.
    void hold();
    void release();

    /// To be called by whatever touches a card, which the main thread never may.
    void touchCard();

    /// Waits while the gate is closed.
    void pass(const std::string &gate);
    void open(const std::string &gate);
    void openAll();
    /// One of those who wait at a closed gate goes on.
    void letOneThrough(const std::string &gate);

    /// Threads that wait at a closed gate.
    [[nodiscard]] int waitingCount() const;

    void beginAccess(const std::string &path);
    void endAccess(const std::string &path);
    [[nodiscard]] int openAccesses() const;
    [[nodiscard]] bool mayRead(const std::string &path) const;

    /// From now on @p file may be removed from the card that was put in as @p life.
    void allowRemoval(int life, const std::string &file);
    /// What was allowed on one life of a card, is allowed on its next.
    void renewPermits(int life, int nextLife);
    /// A run that was stopped may finish the file in hand while another one goes on.
    void dropAlive(int life);
    void beginRemoval(int life, const std::string &file);
    void endRemoval(int life);

    [[nodiscard]] QStringList takeOffences();

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_opened;
    WalkWorld m_facts;
    bool m_isHeld = false;
    std::map<std::string, int> m_waiting; ///< by gate
    std::map<std::string, int> m_passes;  ///< by gate
    std::map<std::string, int> m_accesses;
    std::set<std::pair<int, std::string>> m_removable;
    std::set<int> m_droppedAlive;  ///< lives of cards that were dropped and are there
    std::map<int, int> m_removals; ///< by life of a card
    QStringList m_offences;
};
