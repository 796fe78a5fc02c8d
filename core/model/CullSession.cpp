// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/CullSession.h"

#include "platform/checks/Precondition.h"

#include <algorithm>

CullSession::CullSession(QList<MediaItem> items, const QSet<QString> &rejectedIDs,
                         qint64 currentIndex)
    : m_items(std::move(items))
{
    m_indexOfID.reserve(m_items.size());
    for (qint64 index = 0; index < m_items.size(); ++index) {
        m_indexOfID.insert(m_items.at(index).id, index);
    }
    precondition(m_indexOfID.size() == m_items.size(), "the items of a session need unique ids");

    for (const auto &id : rejectedIDs) {
        if (m_indexOfID.contains(id)) {
            m_rejectedIDs.insert(id);
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
    std::ranges::copy_if(m_items, std::back_inserter(rejected),
                         [this](const MediaItem &item) { return isRejected(item); });
    return rejected;
}

bool CullSession::isRejected(const MediaItem &item) const
{
    return m_rejectedIDs.contains(item.id);
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
    if (!m_indexOfID.contains(id)) {
        return false;
    }
    m_undoStack.append(id);
    reverseDecision(id);
    return m_rejectedIDs.contains(id);
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
    const auto id = m_undoStack.takeLast();
    reverseDecision(id);
    m_currentIndex = m_indexOfID.value(id, m_currentIndex);
    return true;
}

void CullSession::reverseDecision(const QString &id)
{
    if (!m_rejectedIDs.remove(id)) {
        m_rejectedIDs.insert(id);
    }
}
