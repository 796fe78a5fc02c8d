// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/model/MediaItem.h"
#include "core/model/RejectedRows.h"

#include <QHash>
#include <QList>
#include <QSet>

/// One culling pass over one card: the items in shooting order, the rejected ones, the position on
/// screen and an undo history of decisions. No persistence, no signals; main thread only.
class CullSession {
public:
    /// Two items of one id stop the program. Rejected ids that are not among the items are
    /// dropped; the index is clamped into the list.
    explicit CullSession(QList<MediaItem> items, const QSet<QString> &rejectedIDs = {},
                         qint64 currentIndex = 0);
    CullSession(const CullSession &) = delete;
    CullSession &operator=(const CullSession &) = delete;

    [[nodiscard]] const QList<MediaItem> &items() const { return m_items; }

    /// Spelled out anew at each call; what is asked often is asked of rejectedRows().
    [[nodiscard]] QSet<QString> rejectedIDs() const;

    /// Rows of items().
    [[nodiscard]] const RejectedRows &rejectedRows() const { return m_rejected; }

    [[nodiscard]] static QSet<QString> idsOf(const QList<MediaItem> &items,
                                             const RejectedRows &rows);

    [[nodiscard]] qint64 currentIndex() const { return m_currentIndex; }

    /// Null when the session is empty. Lives as long as the session.
    [[nodiscard]] const MediaItem *currentItem() const;
    [[nodiscard]] bool isAtLastItem() const;
    /// In the order of items().
    [[nodiscard]] QList<MediaItem> rejectedItems() const;
    /// The one at @p index of rejectedItems(); null when there is none. Lives as long as the
    /// session.
    [[nodiscard]] const MediaItem *rejectedItem(qint64 index) const;

    [[nodiscard]] qint64 rejectedCount() const { return m_rejected.count(); }

    [[nodiscard]] bool hasRejects() const { return m_rejected.count() > 0; }

    [[nodiscard]] bool isRejected(const MediaItem &item) const;

    /// True when the position moved.
    bool next();
    bool previous();
    /// Ignored when there is no item @p index.
    void jump(qint64 index);

    /// Reverses the decision on the item @p id; true when it is now rejected.
    bool toggle(const QString &id);
    bool toggleCurrent();
    /// Takes the last toggle back and shows its item; true when there was one.
    bool undo();

    /// The rows whose decision was reversed, one entry each time, the oldest first: who remembers
    /// how many there were finds what has changed since.
    [[nodiscard]] const QList<qint64> &reversals() const { return m_reversals; }

private:
    void reverseDecision(qint64 row);

    QList<MediaItem> m_items;
    QHash<QString, qint64> m_indexOfID;
    RejectedRows m_rejected;
    qint64 m_currentIndex = 0;
    QList<QString> m_undoStack;
    QList<qint64> m_reversals;
};
