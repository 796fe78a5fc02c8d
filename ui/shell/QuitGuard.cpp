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
    m_thread = std::thread([this, patience, status] {
        std::unique_lock lock(m_mutex);
        if (!m_over.wait_for(lock, patience, [this] { return m_isOver; })) {
            std::_Exit(status);
        }
    });
}
