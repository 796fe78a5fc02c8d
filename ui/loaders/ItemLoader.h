// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "core/model/MediaItem.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <stop_token>

/// Loads something of one given item, anew whenever another is given. Main thread only.
class ItemLoader : public QObject {
    Q_OBJECT
    Q_PROPERTY(AppState *appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)
    Q_PROPERTY(MediaItem item READ item WRITE setItem NOTIFY itemChanged REQUIRED)

public:
    ~ItemLoader() override;

    [[nodiscard]] AppState *appState() const { return m_appState; }

    void setAppState(AppState *appState);

    [[nodiscard]] const MediaItem &item() const { return m_item; }

    void setItem(const MediaItem &item);

Q_SIGNALS:
    void appStateChanged();
    void itemChanged();

protected:
    using QObject::QObject;

    /// Forgets what was loaded and loads it again; nothing without a controller or an item.
    void restart();

    /// Counts restarts: a result of an earlier one is not wanted any more.
    [[nodiscard]] qint64 generation() const { return m_generation; }

    /// Requested at the next restart, and at the end.
    [[nodiscard]] std::stop_token stopToken() const { return m_stop.get_token(); }

private:
    /// What is not to be shown for another item.
    virtual void forget() {}

    virtual QCoro::Task<> load(MediaItem item) = 0;

    QPointer<AppState> m_appState;
    MediaItem m_item;
    std::stop_source m_stop;
    qint64 m_generation = 0;
};
