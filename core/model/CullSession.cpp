// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/CullSession.h"

#include "platform/checks/Precondition.h"

#include <algorithm>

CullSession::CullSession(QList<MediaItem> items, const QSet<QString> &rejectedIDs,
                         qint64 currentIndex)
    : m_items(std::move(items))
    , m_rejected(m_items.size())
{
    m_indexOfID.reserve(m_items.size());
    for (qint64 index = 0; index < m_items.size(); ++index) {
        m_indexOfID.insert(m_items.at(index).id, index);
    }
    precondition(m_indexOfID.size() == m_items.size(), "the items of a session need unique ids");

    for (const auto &id : rejectedIDs) {
        if (const auto row = m_indexOfID.constFind(id); row != m_indexOfID.cend()) {
            m_rejected.flip(*row);
        }
    }
    const qint64 lastIndex = m_items.size() - 1;
    m_currentIndex = m_items.isEmpty() ? 0 : std::clamp<qint64>(currentIndex, 0, lastIndex);
}

const MediaItem *CullSession::currentItem() const
{
    return m_items.isEmpty() ? nullptr : &m_items.at(m_currentIndex);
}

bool CullSession::isAtLastItem() const
{
    return m_currentIndex >= m_items.size() - 1;
}

QList<MediaItem> CullSession::rejectedItems() const
{
    QList<MediaItem> rejected;
    rejected.reserve(m_rejected.count());
    for (const auto row : m_rejected.rows()) {
        rejected.append(m_items.at(row));
    }
    return rejected;
}

const MediaItem *CullSession::rejectedItem(qint64 index) const
{
    const auto row = m_rejected.at(index);
    return row >= 0 ? &m_items.at(row) : nullptr;
}

QSet<QString> CullSession::rejectedIDs() const
{
    return idsOf(m_items, m_rejected);
}

QSet<QString> CullSession::idsOf(const QList<MediaItem> &items, const RejectedRows &rows)
{
    QSet<QString> ids;
    ids.reserve(rows.count());
    for (const auto row : rows.rows()) {
        ids.insert(items.at(row).id);
    }
    return ids;
}

bool CullSession::isRejected(const MediaItem &item) const
{
    const auto row = m_indexOfID.constFind(item.id);
    return row != m_indexOfID.cend() && m_rejected.contains(*row);
}

bool CullSession::next()
{
    if (isAtLastItem()) {
        return false;
    }
    ++m_currentIndex;
    return true;
}

bool CullSession::previous()
{
    if (m_currentIndex < 1) {
        return false;
    }
    --m_currentIndex;
    return true;
}

void CullSession::jump(qint64 index)
{
    if (index >= 0 && index < m_items.size()) {
        m_currentIndex = index;
    }
}

bool CullSession::toggle(const QString &id)
{
    const auto row = m_indexOfID.constFind(id);
    if (row == m_indexOfID.cend()) {
        return false;
    }
    m_undoStack.append(id);
    reverseDecision(*row);
    return m_rejected.contains(*row);
}

bool CullSession::toggleCurrent()
{
    const auto *item = currentItem();
    return item && toggle(item->id);
}

bool CullSession::undo()
{
    if (m_undoStack.isEmpty()) {
        return false;
    }
    m_currentIndex = m_indexOfID.value(m_undoStack.takeLast());
    reverseDecision(m_currentIndex);
    return true;
}

void CullSession::reverseDecision(qint64 row)
{
    m_rejected.flip(row);
    m_reversals.append(row);
}
