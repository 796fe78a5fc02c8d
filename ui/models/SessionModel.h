// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "core/model/MediaItem.h"

#include <QAbstractListModel>
#include <QPointer>

/// The session's items in shooting order, which of them are rejected and which one is current.
/// Follows the controller. Main thread only.
class SessionModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(AppState *appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)
    Q_PROPERTY(qint64 count READ count NOTIFY countChanged)
    Q_PROPERTY(qint64 currentIndex READ currentIndex NOTIFY currentIndexChanged)
    Q_PROPERTY(bool hasCurrent READ hasCurrent NOTIFY currentItemChanged)
    Q_PROPERTY(MediaItem currentItem READ currentItem NOTIFY currentItemChanged)
    Q_PROPERTY(QString currentItemId READ currentItemId NOTIFY currentItemChanged)
    Q_PROPERTY(QString currentName READ currentName NOTIFY currentItemChanged)
    Q_PROPERTY(bool currentIsVideo READ currentIsVideo NOTIFY currentItemChanged)
    Q_PROPERTY(bool currentRejected READ currentRejected NOTIFY currentRejectedChanged)
    Q_PROPERTY(qint64 rejectedCount READ rejectedCount NOTIFY rejectedCountChanged)

public:
    explicit SessionModel(QObject *parent = nullptr);

    [[nodiscard]] AppState *appState() const { return m_appState; }

    void setAppState(AppState *appState);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] qint64 count() const { return m_items.size(); }

    [[nodiscard]] qint64 currentIndex() const { return m_currentIndex; }

    [[nodiscard]] bool hasCurrent() const { return m_currentIndex < m_items.size(); }

    /// One without an id when there is none.
    [[nodiscard]] const MediaItem &currentItem() const;
    [[nodiscard]] QString currentItemId() const { return currentItem().id; }

    [[nodiscard]] QString currentName() const;
    [[nodiscard]] bool currentIsVideo() const;
    [[nodiscard]] bool currentRejected() const;

    [[nodiscard]] qint64 rejectedCount() const { return m_rejected.count(); }

Q_SIGNALS:
    void appStateChanged();
    void countChanged();
    void currentIndexChanged();
    void currentItemChanged();
    void currentRejectedChanged();
    void rejectedCountChanged();
    /// After every recorded change, whatever it changed here.
    void changeFollowed();

private:
    void replaceSession();
    void followChanges();
    void tellRejectedRows(const RejectedRows &before);

    QPointer<AppState> m_appState;
    QList<MediaItem> m_items;
    RejectedRows m_rejected;
    qint64 m_reversals = 0; ///< how many of the session's are known
    qint64 m_currentIndex = 0;
};
