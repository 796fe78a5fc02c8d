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
    return ItemRole::value(m_items.at(index.row()), m_rejected.contains(index.row()), role);
}

QHash<int, QByteArray> SessionModel::roleNames() const
{
    return ItemRole::names();
}

const MediaItem &SessionModel::currentItem() const
{
    static const MediaItem none;
    return hasCurrent() ? m_items.at(m_currentIndex) : none;
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
    return hasCurrent() && m_rejected.contains(m_currentIndex);
}

void SessionModel::replaceSession()
{
    const auto *session = m_appState ? m_appState->session() : nullptr;
    beginResetModel();
    m_items = session ? session->items() : QList<MediaItem>();
    m_rejected = session ? session->rejectedRows() : RejectedRows();
    m_reversals = session ? session->reversals().size() : 0;
    m_currentIndex = session ? session->currentIndex() : 0;
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
    if (!session || !session->items().isSharedWith(m_items)) {
        return; // another session is about to be told
    }
    const bool wasRejected = currentRejected();
    const auto rejectedBefore = std::exchange(m_rejected, session->rejectedRows());
    const auto indexBefore = std::exchange(m_currentIndex, session->currentIndex());
    tellRejectedRows(rejectedBefore);
    if (rejectedBefore.count() != m_rejected.count()) {
        Q_EMIT rejectedCountChanged();
    }
    if (indexBefore != m_currentIndex) {
        Q_EMIT currentIndexChanged();
        Q_EMIT currentItemChanged();
    }
    if (wasRejected != currentRejected()) {
        Q_EMIT currentRejectedChanged();
    }
    Q_EMIT changeFollowed();
}

void SessionModel::tellRejectedRows(const RejectedRows &before)
{
    const auto reversals = m_appState->session()->reversals();
    for (auto known = std::exchange(m_reversals, reversals.size()); known < m_reversals; ++known) {
        const auto row = reversals.at(known);
        if (before.contains(row) != m_rejected.contains(row)) {
            const auto changed = index(static_cast<int>(row));
            Q_EMIT dataChanged(changed, changed, {ItemRole::Rejected});
        }
    }
}
