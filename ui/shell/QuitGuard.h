// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

/// Ends the process when a card that hangs holds up its end: a thread that waits for such a card
/// cannot be stopped. Lives in main(), longer than all that may wait.
class QuitGuard {
public:
    QuitGuard() = default;
    QuitGuard(const QuitGuard &) = delete;
    QuitGuard &operator=(const QuitGuard &) = delete;
    /// The end has come by itself.
    ~QuitGuard();

    /// To be called when all is done that must be done. The process ends with @p status when
    /// @p patience has passed and the guard is still there. Once.
    void arm(std::chrono::milliseconds patience, int status);

private:
    std::mutex m_mutex;
    std::condition_variable m_over;
    bool m_isOver = false;
    std::thread m_thread;
};
