// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "core/model/MediaItem.h"

#include <QBitArray>
#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <stop_token>

/// How many items and files the session's rejects are, and how much room they take. Sizes are asked
/// of the card once for each item as long as it stays selected, off the main thread. Main thread
/// only.
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

    void replaceSession();
    void followChanges();
    void countAll();
    void count(qint64 row, bool rejected);
    void tell();
    QCoro::Task<> ask(QList<qint64> rows, std::stop_token stop);

    QPointer<AppState> m_appState;
    QList<MediaItem> m_items; ///< all of the session
    RejectedRows m_rejected;  ///< those that are counted
    qint64 m_reversals = 0;   ///< how many of the session's are known
    QList<qint64> m_sizes;    ///< bytes by row; -1: not known
    QBitArray m_asked;        ///< whose sizes are known or on their way
    QList<qint64> m_unasked;  ///< rows
    qint64 m_files = 0;
    qint64 m_bytes = 0;
    qint64 m_sizesOnTheirWay = 0; ///< of what is counted
    Totals m_now;
    std::stop_source m_stop;
    qint64 m_generation = 0; ///< counts sessions
};
