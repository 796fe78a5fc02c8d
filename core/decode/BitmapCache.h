// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QImage>
#include <QList>
#include <QString>

/// Keeps the last bitmaps that were put in, at most a fixed number. Eviction follows first
/// insertion, not last use: a walk that moves forward leaves the oldest entries behind it.
class BitmapCache {
public:
    explicit BitmapCache(qint64 cap)
        : m_cap(cap)
    {
    }

    [[nodiscard]] bool contains(const QString &key) const { return m_bitmaps.contains(key); }

    /// Null when @p key is not there.
    [[nodiscard]] QImage value(const QString &key) const { return m_bitmaps.value(key); }

    [[nodiscard]] qint64 size() const { return m_bitmaps.size(); }

    /// The keys, oldest first.
    [[nodiscard]] const QList<QString> &order() const { return m_order; }

    /// A key that is there already keeps its place; a null bitmap is not kept.
    void insert(const QString &key, const QImage &bitmap);
    void clear();

private:
    qint64 m_cap;
    QHash<QString, QImage> m_bitmaps;
    QList<QString> m_order;
};
