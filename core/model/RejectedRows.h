// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>

/// Which rows of a list are rejected, one bit each. Copies share their bits until one of them is
/// changed, which costs a few kilobytes for the largest cards: whoever wants to know what was
/// rejected at some moment keeps a copy.
class RejectedRows {
public:
    explicit RejectedRows(qint64 rows = 0)
        : m_words((rows + wordBits - 1) / wordBits)
    {
    }

    /// How many are rejected.
    [[nodiscard]] qint64 count() const { return m_count; }

    /// Of a row that is in the list.
    [[nodiscard]] bool contains(qint64 row) const
    {
        return (m_words.at(row / wordBits) & bitOf(row)) != 0;
    }

    /// Reverses what is said of a row that is in the list.
    void flip(qint64 row);

    /// How many rejected rows come before @p row.
    [[nodiscard]] qint64 countBefore(qint64 row) const;

    /// The row of the rejected one number @p number, from 0; -1 when there are not so many.
    [[nodiscard]] qint64 at(qint64 number) const;

    /// In ascending order.
    [[nodiscard]] QList<qint64> rows() const;

    bool operator==(const RejectedRows &) const = default;

private:
    static constexpr qint64 wordBits = 64;

    [[nodiscard]] static quint64 bitOf(qint64 row) { return quint64(1) << (row % wordBits); }

    QList<quint64> m_words;
    qint64 m_count = 0;
};
