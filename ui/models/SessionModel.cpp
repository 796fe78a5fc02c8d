// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/models/SessionModel.h"

#include "ui/models/ItemRole.h"

SessionModel::SessionModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

void SessionModel::setAppState(AppState *appState)
{
    if (m_appState == appState) {
        return;
    }
    if (m_appState) {
        m_appState->disconnect(this);
    }
    m_appState = appState;
    if (appState) {
        connect(appState, &AppState::sessionChanged, this, &SessionModel::replaceSession);
        connect(appState, &AppState::changeCountChanged, this, &SessionModel::followChanges);
    }
    replaceSession();
    Q_EMIT appStateChanged();
}

int SessionModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

QVariant SessionModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto &item = m_items.at(index.row());
    return ItemRole::value(item, m_rejectedIDs.contains(item.id), role);
}

QHash<int, QByteArray> SessionModel::roleNames() const
{
    return ItemRole::names();
}

MediaItem SessionModel::currentItem() const
{
    return hasCurrent() ? m_items.at(m_currentIndex) : MediaItem();
}

QString SessionModel::currentName() const
{
    return hasCurrent() ? currentItem().displayName() : QString();
}

bool SessionModel::currentIsVideo() const
{
    return currentItem().kind == MediaKind::video;
}

bool SessionModel::currentRejected() const
{
    return m_rejectedIDs.contains(currentItem().id);
}

QString SessionModel::itemIdAt(qint64 row) const
{
    return row >= 0 && row < m_items.size() ? m_items.at(row).id : QString();
}

void SessionModel::replaceSession()
{
    const auto *session = m_appState ? m_appState->session() : nullptr;
    beginResetModel();
    m_items = session ? session->items() : QList<MediaItem>();
    m_rejectedIDs = session ? session->rejectedIDs() : QSet<QString>();
    m_currentIndex = session ? session->currentIndex() : 0;
    m_rowOfID.clear();
    for (int row = 0; row < m_items.size(); ++row) {
        m_rowOfID.insert(m_items.at(row).id, row);
    }
    endResetModel();
    Q_EMIT countChanged();
    Q_EMIT currentIndexChanged();
    Q_EMIT currentItemChanged();
    Q_EMIT currentRejectedChanged();
    Q_EMIT rejectedCountChanged();
}

void SessionModel::followChanges()
{
    const auto *session = m_appState ? m_appState->session() : nullptr;
    if (!session) {
        return;
    }
    const bool wasRejected = currentRejected();
    const auto rejectedBefore = std::exchange(m_rejectedIDs, session->rejectedIDs());
    const auto indexBefore = std::exchange(m_currentIndex, session->currentIndex());
    if (rejectedBefore != m_rejectedIDs) {
        tellRejectedRows(rejectedBefore);
    }
    if (rejectedBefore.size() != m_rejectedIDs.size()) {
        Q_EMIT rejectedCountChanged();
    }
    if (indexBefore != m_currentIndex) {
        Q_EMIT currentIndexChanged();
        Q_EMIT currentItemChanged();
    }
    if (wasRejected != currentRejected()) {
        Q_EMIT currentRejectedChanged();
    }
}

void SessionModel::tellRejectedRows(const QSet<QString> &before)
{
    const auto changed = (before - m_rejectedIDs) + (m_rejectedIDs - before);
    for (const auto &id : changed) {
        const auto row = index(m_rowOfID.value(id));
        Q_EMIT dataChanged(row, row, {ItemRole::Rejected});
    }
}
