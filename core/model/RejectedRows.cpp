// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/RejectedRows.h"

#include <bit>

void RejectedRows::flip(qint64 row)
{
    m_count += contains(row) ? -1 : 1;
    m_words[row / wordBits] ^= bitOf(row);
}

qint64 RejectedRows::countBefore(qint64 row) const
{
    qint64 count = 0;
    for (qint64 word = 0; word < row / wordBits; ++word) {
        count += std::popcount(m_words.at(word));
    }
    const auto rest = row % wordBits == 0 ? 0 : m_words.at(row / wordBits) & (bitOf(row) - 1);
    return count + std::popcount(rest);
}

qint64 RejectedRows::at(qint64 number) const
{
    if (number < 0 || number >= m_count) {
        return -1;
    }
    qint64 word = 0;
    while (number >= std::popcount(m_words.at(word))) {
        number -= std::popcount(m_words.at(word));
        ++word;
    }
    auto bits = m_words.at(word);
    for (; number > 0; --number) {
        bits &= bits - 1; // without its lowest one
    }
    return word * wordBits + std::countr_zero(bits);
}

QList<qint64> RejectedRows::rows() const
{
    QList<qint64> rows;
    rows.reserve(m_count);
    for (qint64 word = 0; word < m_words.size(); ++word) {
        for (auto bits = m_words.at(word); bits != 0; bits &= bits - 1) {
            rows.append(word * wordBits + std::countr_zero(bits));
        }
    }
    return rows;
}
