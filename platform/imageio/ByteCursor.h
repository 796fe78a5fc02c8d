// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

/// Takes big-endian numbers out of bytes in memory. Once something was not there, it stays failed
/// and gives zeros.
class ByteCursor {
public:
    explicit ByteCursor(QByteArray bytes);

    [[nodiscard]] bool failed() const { return m_failed; }

    /// How many bytes are left.
    [[nodiscard]] qsizetype left() const { return m_failed ? 0 : m_bytes.size() - m_at; }

    /// An unsigned number of @p size bytes, 0 to 8.
    quint64 take(int size);
    QByteArray takeBytes(qsizetype count);
    void skip(qsizetype count);
    /// The bytes before the next NUL, and moves behind it.
    QByteArray takeText();

private:
    QByteArray m_bytes;
    qsizetype m_at = 0;
    bool m_failed = false;
};
