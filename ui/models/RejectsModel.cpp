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
    return parent.isValid() ? 0 : static_cast<int>(m_rejected.count());
}

QVariant RejectsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    return ItemRole::value(m_items.at(m_rejected.at(index.row())), true, role);
}

QHash<int, QByteArray> RejectsModel::roleNames() const
{
    return ItemRole::names();
}

QString RejectsModel::selectedName() const
{
    return hasSelected() ? m_selectedItem.displayName() : QString();
}

bool RejectsModel::selectedIsVideo() const
{
    return m_selectedItem.kind == MediaKind::video;
}

void RejectsModel::replaceSession()
{
    const auto *session = m_appState ? m_appState->session() : nullptr;
    beginResetModel();
    m_items = session ? session->items() : QList<MediaItem>();
    m_rejected = session ? session->rejectedRows() : RejectedRows();
    m_reversals = session ? session->reversals().size() : 0;
    endResetModel();
    Q_EMIT countChanged();
    followSelection();
}

void RejectsModel::followChanges()
{
    const auto *session = m_appState ? m_appState->session() : nullptr;
    if (!session || !session->items().isSharedWith(m_items)) {
        return; // another session is about to be told
    }
    const auto before = count();
    const auto wanted = session->rejectedRows();
    const auto reversals = session->reversals();
    for (auto known = std::exchange(m_reversals, reversals.size()); known < m_reversals; ++known) {
        takeOver(reversals.at(known), wanted);
    }
    if (before != count()) {
        Q_EMIT countChanged();
    }
    followSelection();
}

void RejectsModel::followSelection()
{
    const qint64 row = m_appState ? m_appState->reviewSelection() : 0;
    const auto place = m_rejected.at(row);
    const auto selected = place >= 0 ? m_items.at(place) : MediaItem();
    if (m_selectedItem == selected) {
        return;
    }
    m_selectedItem = selected;
    Q_EMIT selectedItemChanged();
}

/// What is decided on the item @p row of the session.
void RejectsModel::takeOver(qint64 row, const RejectedRows &wanted)
{
    if (m_rejected.contains(row) == wanted.contains(row)) {
        return;
    }
    const auto place = static_cast<int>(m_rejected.countBefore(row));
    if (wanted.contains(row)) {
        beginInsertRows({}, place, place);
        m_rejected.flip(row);
        endInsertRows();
    } else {
        beginRemoveRows({}, place, place);
        m_rejected.flip(row);
        endRemoveRows();
    }
}
