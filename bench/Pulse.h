// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>

/// Beats every millisecond on the thread of its event loop, and knows the longest time between two
/// beats.
class Pulse {
public:
    Pulse()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
        m_timer.start(std::chrono::milliseconds(1));
        m_since.start();
    }

    /// Milliseconds.
    [[nodiscard]] double longest() const { return m_longest; }

private:
    void beat()
    {
        m_longest = std::max(m_longest, double(m_since.nsecsElapsed()) / 1e6);
        m_since.start();
    }

    QTimer m_timer;
    QElapsedTimer m_since;
    double m_longest = 0;
};
