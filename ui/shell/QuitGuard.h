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

    /// The process ends with @p status when @p patience has passed and the guard is still there.
    /// Takes the place of what was said before.
    void arm(std::chrono::milliseconds patience, int status);

private:
    void watch();

    std::mutex m_mutex;
    std::condition_variable m_over;
    bool m_isOver = false;
    std::chrono::steady_clock::time_point m_deadline;
    int m_status = 0;
    std::thread m_thread;
};
