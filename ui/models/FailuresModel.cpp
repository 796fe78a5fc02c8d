// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/models/FailuresModel.h"

#include <QCoreApplication>

/// What the system says is in the desktop's language already.
static QString shown(const QString &reason)
{
    return QCoreApplication::translate("DeletionReasons", reason.toUtf8().constData());
}

FailuresModel::FailuresModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

void FailuresModel::setAppState(AppState *appState)
{
    if (m_appState == appState) {
        return;
    }
    if (m_appState) {
        m_appState->disconnect(this);
    }
    m_appState = appState;
    if (appState) {
        connect(appState, &AppState::failuresChanged, this, &FailuresModel::read);
    }
    read();
    Q_EMIT appStateChanged();
}

void FailuresModel::read()
{
    beginResetModel();
    m_files = m_appState ? m_appState->failures() : QList<FailedFile>();
    endResetModel();
}

int FailuresModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_files.size());
}

QVariant FailuresModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto &file = m_files.at(index.row());
    return role == Name ? file.name : role == Reason ? QVariant(shown(file.reason)) : QVariant();
}

QHash<int, QByteArray> FailuresModel::roleNames() const
{
    return {{Name, "name"}, {Reason, "reason"}};
}
