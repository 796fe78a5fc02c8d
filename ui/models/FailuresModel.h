// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"

#include <QAbstractListModel>
#include <QPointer>

/// The files that the deletion just told of left on the card, and why. Follows the controller. Main
/// thread only.
class FailuresModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(AppState *appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)

public:
    enum Role {
        Name = Qt::UserRole + 1,
        Reason,
    };

    explicit FailuresModel(QObject *parent = nullptr);

    [[nodiscard]] AppState *appState() const { return m_appState; }

    void setAppState(AppState *appState);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void appStateChanged();

private:
    void read();

    QPointer<AppState> m_appState;
    QList<FailedFile> m_files;
};
