// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/RowRelay.h"

#include <algorithm>
#include <system_error>

/// Rows that change hands at once: each change costs as much as some rows.
constexpr qint64 blockRows = 16;
constexpr qint64 rowsBetween = 6 * blockRows;

RowRelay::RowRelay(int width, std::function<void(const QRgb *)> take)
    : m_width(width)
    , m_take(std::move(take))
    , m_rows(static_cast<size_t>(width) * rowsBetween)
{
    try {
        m_worker = std::thread([this] { work(); });
    } catch (const std::system_error &) {
        // rowWritten() does the work.
    }
}

RowRelay::~RowRelay()
{
    finish();
}

QRgb *RowRelay::row(qint64 number)
{
    return m_rows.data() + (number % rowsBetween) * m_width;
}

QRgb *RowRelay::nextRow()
{
    if (m_worker.joinable() && m_written % blockRows == 0) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_written - m_taken <= rowsBetween - blockRows; });
    }
    return row(m_written);
}

void RowRelay::rowWritten()
{
    if (!m_worker.joinable()) {
        m_take(row(m_written++));
        return;
    }
    if (++m_written % blockRows == 0) {
        const std::lock_guard lock(m_mutex);
        m_ready = m_written;
        m_changed.notify_one();
    }
}

void RowRelay::finish()
{
    if (!m_worker.joinable()) {
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_ready = m_written;
        m_isFinished = true;
        m_changed.notify_one();
    }
    m_worker.join();
}

void RowRelay::work()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_ready > m_taken || m_isFinished; });
        const auto from = m_taken;
        const auto to = m_ready;
        if (from == to) {
            return;
        }
        lock.unlock();
        for (auto number = from; number < to; ++number) {
            m_take(row(number));
        }
        lock.lock();
        m_taken = to;
        m_changed.notify_one();
    }
}
