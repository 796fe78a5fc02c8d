// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <functional>

/// Serves events until @p isTrue, as soon as anything happens; false when that takes too long.
inline bool waitUntil(const std::function<bool()> &isTrue,
                      std::chrono::milliseconds patience = std::chrono::seconds(30))
{
    const QDeadlineTimer deadline(patience);
    QTimer wake; // for what nobody tells
    wake.start(std::chrono::milliseconds(20));
    while (!isTrue()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}
