// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ByteCursor.h"

#include <utility>

ByteCursor::ByteCursor(QByteArray bytes)
    : m_bytes(std::move(bytes))
{
}

quint64 ByteCursor::take(int size)
{
    if (m_failed || size > m_bytes.size() - m_at) {
        m_failed = true;
        return 0;
    }
    quint64 result = 0;
    for (int index = 0; index < size; ++index) {
        result = result << 8 | static_cast<uchar>(m_bytes.at(m_at++));
    }
    return result;
}

QByteArray ByteCursor::takeBytes(qsizetype count)
{
    const auto from = m_at;
    skip(count);
    return m_failed ? QByteArray() : m_bytes.mid(from, count);
}

void ByteCursor::skip(qsizetype count)
{
    if (m_failed || count < 0 || count > m_bytes.size() - m_at) {
        m_failed = true;
        return;
    }
    m_at += count;
}

QByteArray ByteCursor::takeText()
{
    const auto end = m_bytes.indexOf('\0', m_at);
    if (m_failed || end < 0) {
        m_failed = true;
        return {};
    }
    const auto result = m_bytes.mid(m_at, end - m_at);
    m_at = end + 1;
    return result;
}
