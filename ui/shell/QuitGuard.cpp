// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/QuitGuard.h"

#include <cstdlib>

QuitGuard::~QuitGuard()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_isOver = true;
    }
    m_over.notify_all();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void QuitGuard::arm(std::chrono::milliseconds patience, int status)
{
    const std::scoped_lock lock(m_mutex);
    m_deadline = std::chrono::steady_clock::now() + patience;
    m_status = status;
    m_over.notify_all();
    if (!m_thread.joinable()) {
        m_thread = std::thread([this] { watch(); });
    }
}

void QuitGuard::watch()
{
    std::unique_lock lock(m_mutex);
    while (!m_isOver) {
        const auto deadline = m_deadline;
        m_over.wait_until(lock, deadline);
        if (!m_isOver && std::chrono::steady_clock::now() >= m_deadline) {
            std::_Exit(m_status);
        }
    }
}
