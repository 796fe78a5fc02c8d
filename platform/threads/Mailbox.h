// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMetaObject>
#include <QObject>

#include <mutex>
#include <utility>

/// Lets other threads call upon an object for as long as it is there. Safe from several threads.
class Mailbox {
public:
    /// @p receiver closes it before it goes.
    explicit Mailbox(QObject *receiver)
        : m_receiver(receiver)
    {
    }

    /// What is posted from now on, or has not arrived yet when the receiver goes, is dropped.
    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_receiver = nullptr;
    }

    /// Has @p work done in the receiver's thread, soon.
    template<typename Work>
    void post(Work work) const
    {
        const std::lock_guard lock(m_mutex);
        if (m_receiver) {
            QMetaObject::invokeMethod(m_receiver, std::move(work), Qt::QueuedConnection);
        }
    }

private:
    mutable std::mutex m_mutex;
    QObject *m_receiver;
};
