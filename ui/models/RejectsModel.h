// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "core/model/MediaItem.h"

#include <QAbstractListModel>
#include <QPointer>

/// The session's rejected items in shooting order, and which of them is selected. Follows the
/// controller. Main thread only.
class RejectsModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(AppState *appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)
    Q_PROPERTY(qint64 count READ count NOTIFY countChanged)
    Q_PROPERTY(bool hasSelected READ hasSelected NOTIFY selectedItemChanged)
    Q_PROPERTY(MediaItem selectedItem READ selectedItem NOTIFY selectedItemChanged)
    Q_PROPERTY(QString selectedName READ selectedName NOTIFY selectedItemChanged)
    Q_PROPERTY(bool selectedIsVideo READ selectedIsVideo NOTIFY selectedItemChanged)

public:
    explicit RejectsModel(QObject *parent = nullptr);

    [[nodiscard]] AppState *appState() const { return m_appState; }

    void setAppState(AppState *appState);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] qint64 count() const { return m_rejected.count(); }

    [[nodiscard]] bool hasSelected() const { return !m_selectedItem.id.isEmpty(); }

    /// One without an id when there is none.
    [[nodiscard]] const MediaItem &selectedItem() const { return m_selectedItem; }

    [[nodiscard]] QString selectedName() const;
    [[nodiscard]] bool selectedIsVideo() const;

Q_SIGNALS:
    void appStateChanged();
    void countChanged();
    void selectedItemChanged();

private:
    void replaceSession();
    void followChanges();
    void takeOver(qint64 row, const RejectedRows &wanted);
    void followSelection();

    QPointer<AppState> m_appState;
    QList<MediaItem> m_items; ///< all of the session
    RejectedRows m_rejected;
    qint64 m_reversals = 0; ///< how many of the session's are known
    MediaItem m_selectedItem;
};
