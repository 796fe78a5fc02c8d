// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/models/RejectsModel.h"

#include "ui/models/ItemRole.h"

RejectsModel::RejectsModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

void RejectsModel::setAppState(AppState *appState)
{
    if (m_appState == appState) {
        return;
    }
    if (m_appState) {
        m_appState->disconnect(this);
    }
    m_appState = appState;
    if (appState) {
        connect(appState, &AppState::sessionChanged, this, &RejectsModel::replaceSession);
        connect(appState, &AppState::changeCountChanged, this, &RejectsModel::followChanges);
        connect(appState, &AppState::reviewSelectionChanged, this, &RejectsModel::followSelection);
    }
    replaceSession();
    Q_EMIT appStateChanged();
}

int RejectsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

QVariant RejectsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    return ItemRole::value(m_items.at(index.row()), true, role);
}

QHash<int, QByteArray> RejectsModel::roleNames() const
{
    return ItemRole::names();
}

bool RejectsModel::selectedIsVideo() const
{
    return m_selectedItem.kind == MediaKind::video;
}

QList<MediaItem> RejectsModel::rejects() const
{
    const auto *session = m_appState ? m_appState->session() : nullptr;
    return session ? session->rejectedItems() : QList<MediaItem>();
}

void RejectsModel::replaceSession()
{
    beginResetModel();
    m_items = rejects();
    endResetModel();
    Q_EMIT countChanged();
    followSelection();
}

void RejectsModel::followChanges()
{
    const auto *session = m_appState ? m_appState->session() : nullptr;
    if (!session) {
        return;
    }
    const auto before = m_items.size();
    removeRescued(session->rejectedIDs());
    insertRejected(session->rejectedItems());
    if (before != m_items.size()) {
        Q_EMIT countChanged();
    }
    followSelection();
}

void RejectsModel::followSelection()
{
    const qint64 row = m_appState ? m_appState->reviewSelection() : 0;
    const auto selected = row >= 0 && row < m_items.size() ? m_items.at(row) : MediaItem();
    if (m_selectedItem == selected) {
        return;
    }
    m_selectedItem = selected;
    Q_EMIT selectedItemChanged();
}

void RejectsModel::removeRescued(const QSet<QString> &rejectedIDs)
{
    for (auto row = static_cast<int>(m_items.size()) - 1; row >= 0; --row) {
        if (!rejectedIDs.contains(m_items.at(row).id)) {
            beginRemoveRows({}, row, row);
            m_items.removeAt(row);
            endRemoveRows();
        }
    }
}

void RejectsModel::insertRejected(const QList<MediaItem> &rejects)
{
    // What is left of the rows is in the order of the rejects, so they meet one after the other.
    for (int row = 0; row < rejects.size(); ++row) {
        const auto &item = rejects.at(row);
        if (row >= m_items.size() || m_items.at(row).id != item.id) {
            beginInsertRows({}, row, row);
            m_items.insert(row, item);
            endInsertRows();
        }
    }
}
