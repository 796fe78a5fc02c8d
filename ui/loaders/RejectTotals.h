// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "core/model/MediaItem.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QPointer>

#include <stop_token>

/// How many items and files the session's rejects are, and how much room they take. Sizes are asked
/// of the card once for each item, off the main thread. Main thread only.
class RejectTotals : public QObject {
    Q_OBJECT
    Q_PROPERTY(AppState *appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)
    Q_PROPERTY(qint64 itemCount READ itemCount NOTIFY itemCountChanged)
    Q_PROPERTY(qint64 fileCount READ fileCount NOTIFY fileCountChanged)
    Q_PROPERTY(QString sizeText READ sizeText NOTIFY sizeTextChanged)

public:
    explicit RejectTotals(QObject *parent = nullptr);
    ~RejectTotals() override;

    [[nodiscard]] AppState *appState() const { return m_appState; }

    void setAppState(AppState *appState);

    [[nodiscard]] qint64 itemCount() const { return m_now.itemCount; }

    [[nodiscard]] qint64 fileCount() const { return m_now.fileCount; }

    /// "…" until every size is known.
    [[nodiscard]] QString sizeText() const { return m_now.sizeText; }

Q_SIGNALS:
    void appStateChanged();
    void itemCountChanged();
    void fileCountChanged();
    void sizeTextChanged();

private:
    struct Totals {
        qint64 itemCount = 0;
        qint64 fileCount = 0;
        QString sizeText;
    };

    void forgetSession();
    void update();
    QCoro::Task<> ask(QList<MediaItem> items, std::stop_token stop);
    [[nodiscard]] QList<MediaItem> rejects() const;
    [[nodiscard]] QString sizeTextOf(const QList<MediaItem> &rejects) const;

    QPointer<AppState> m_appState;
    QHash<QString, qint64> m_sizes; ///< bytes by item id
    QSet<QString> m_asked;          ///< ids whose sizes are known or on their way
    Totals m_now;
    std::stop_source m_stop;
    qint64 m_generation = 0; ///< counts sessions
};
