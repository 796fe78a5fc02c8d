// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/threads/RenewablePool.h"

RenewablePool::RenewablePool(int threads)
    : m_threads(threads)
{
    addLane();
}

RenewablePool::~RenewablePool()
{
    for (const auto &lane : m_lanes) {
        *lane.closed = true;
    }
    m_lanes.clear(); // waits for each
}

void RenewablePool::renew()
{
    *m_lanes.back().closed = true;
    // A pool without work has threads that only wait to end, which is soon done.
    m_lanes.remove_if([](const Lane &lane) { return lane.pool->waitForDone(0); });
    addLane();
}

void RenewablePool::addLane()
{
    Lane lane{.closed = std::make_shared<std::atomic_bool>(false),
              .pool = std::make_unique<QThreadPool>()};
    lane.pool->setMaxThreadCount(m_threads);
    lane.pool->setThreadPriority(QThread::NormalPriority);
    m_lanes.push_back(std::move(lane));
}
