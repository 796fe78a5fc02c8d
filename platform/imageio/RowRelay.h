// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QRgb>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// Hands rows of pixels from the thread that makes them to one that works on them, in order, so
/// that both have something to do. Keeps a few blocks of rows in between. Where the system has no
/// further thread, the maker's does both. The maker's functions are for one thread.
class RowRelay {
public:
    /// @p take is called with each row, @p width pixels, on the other thread, and must not throw.
    RowRelay(int width, std::function<void(const QRgb *pixels)> take);
    RowRelay(const RowRelay &) = delete;
    RowRelay &operator=(const RowRelay &) = delete;
    ~RowRelay();

    /// Where the next row is to be written; rowWritten() then hands it on. Waits while the other
    /// thread is behind.
    [[nodiscard]] QRgb *nextRow();
    void rowWritten();

    /// Returns when all rows have been worked on; no further ones may come.
    void finish();

private:
    [[nodiscard]] QRgb *row(qint64 number);
    void work();

    int m_width;
    std::function<void(const QRgb *)> m_take;
    std::vector<QRgb> m_rows;
    qint64 m_written = 0; ///< rows; of the maker alone
    std::mutex m_mutex;
    std::condition_variable m_changed;
    // Guarded by the mutex:
    qint64 m_ready = 0; ///< rows that may be worked on
    qint64 m_taken = 0; ///< rows whose place is free again
    bool m_isFinished = false;
    std::thread m_worker;
};
