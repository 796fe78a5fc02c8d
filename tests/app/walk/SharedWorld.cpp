// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/SharedWorld.h"

#include <QCoreApplication>
#include <QThread>

using namespace Qt::StringLiterals;

WalkWorld SharedWorld::facts() const
{
    return read([](const WalkWorld &facts) { return facts; });
}

void SharedWorld::hold()
{
    const std::scoped_lock lock(m_mutex);
    m_isHeld = true;
}

void SharedWorld::release()
{
    const std::scoped_lock lock(m_mutex);
    m_isHeld = false;
    m_opened.notify_all();
}

// Whoever opens a gate counts those who wait out: until they have woken up, they are at work.

void SharedWorld::touchCard()
{
    if (QThread::currentThread() == QCoreApplication::instance()->thread()) {
        const std::scoped_lock lock(m_mutex);
        m_offences.append(u"the main thread touches a card"_s);
    }
}

void SharedWorld::pass(const std::string &gate)
{
    std::unique_lock lock(m_mutex);
    m_opened.wait(lock, [this] { return !m_isHeld; });
    if (!m_facts.isClosed(gate)) {
        return;
    }
    ++m_waiting[gate];
    m_opened.wait(lock, [&] { return !m_facts.isClosed(gate) || m_passes[gate] > 0; });
    if (m_facts.isClosed(gate)) {
        --m_passes[gate];
    }
}

void SharedWorld::open(const std::string &gate)
{
    const std::scoped_lock lock(m_mutex);
    m_facts.closedGates.erase(gate);
    m_waiting.erase(gate);
    m_opened.notify_all();
}

void SharedWorld::openAll()
{
    const std::scoped_lock lock(m_mutex);
    m_isHeld = false;
    m_facts.closedGates.clear();
    m_waiting.clear();
    m_opened.notify_all();
}

void SharedWorld::letOneThrough(const std::string &gate)
{
    const std::scoped_lock lock(m_mutex);
    if (m_waiting[gate] > 0) {
        --m_waiting[gate];
        ++m_passes[gate];
        m_opened.notify_all();
    }
}

int SharedWorld::waitingCount() const
{
    const std::scoped_lock lock(m_mutex);
    int count = 0;
    for (const auto &[gate, waiting] : m_waiting) {
        count += waiting;
    }
    return count;
}

void SharedWorld::beginAccess(const std::string &path)
{
    const std::scoped_lock lock(m_mutex);
    ++m_accesses[path];
}

void SharedWorld::endAccess(const std::string &path)
{
    const std::scoped_lock lock(m_mutex);
    if (--m_accesses[path] < 0) {
        m_offences.append(u"an access is ended twice"_s);
    }
}

int SharedWorld::openAccesses() const
{
    const std::scoped_lock lock(m_mutex);
    int count = 0;
    for (const auto &[path, accesses] : m_accesses) {
        count += accesses;
    }
    return count;
}

bool SharedWorld::mayRead(const std::string &path) const
{
    const std::scoped_lock lock(m_mutex);
    const auto *mount = m_facts.mountAt(path);
    const auto accesses = m_accesses.find(path);
    return mount && (!m_facts.cards[mount->card].isClosed ||
                     (accesses != m_accesses.end() && accesses->second > 0));
}

void SharedWorld::allowRemoval(int life, const std::string &file)
{
    const std::scoped_lock lock(m_mutex);
    m_removable.emplace(life, file);
}

void SharedWorld::renewPermits(int life, int nextLife)
{
    const std::scoped_lock lock(m_mutex);
    const auto permits = m_removable;
    for (const auto &[permitted, file] : permits) {
        if (permitted == life) {
            m_removable.emplace(nextLife, file);
        }
    }
}

void SharedWorld::dropAlive(int life)
{
    const std::scoped_lock lock(m_mutex);
    m_droppedAlive.insert(life);
}

void SharedWorld::beginRemoval(int life, const std::string &file)
{
    const std::scoped_lock lock(m_mutex);
    if (++m_removals[life] > 1 &&
        !m_droppedAlive.contains(life)) { // an earlier run on a card that is gone may hang
        m_offences.append(u"two removals from one card at a time"_s);
    }
    if (!m_removable.contains({life, file})) {
        m_offences.append(
            u"%1 is to be removed, and nobody asked for it"_s.arg(QString::fromStdString(file)));
    }
}

void SharedWorld::endRemoval(int life)
{
    const std::scoped_lock lock(m_mutex);
    --m_removals[life];
}

QStringList SharedWorld::takeOffences()
{
    const std::scoped_lock lock(m_mutex);
    return std::exchange(m_offences, {});
}
