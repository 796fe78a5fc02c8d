// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "core/model/MediaItem.h"

#include <QCoroTask>
#include <QImage>
#include <QObject>
#include <QPointer>

/// The picture of one given item, as large as the screen. Main thread only.
class EnlargedImageLoader : public QObject {
    Q_OBJECT
    Q_PROPERTY(AppState *appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)
    Q_PROPERTY(MediaItem item READ item WRITE setItem NOTIFY itemChanged REQUIRED)
    Q_PROPERTY(QImage image READ image NOTIFY imageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)

public:
    explicit EnlargedImageLoader(QObject *parent = nullptr);

    [[nodiscard]] AppState *appState() const { return m_appState; }

    void setAppState(AppState *appState);

    [[nodiscard]] const MediaItem &item() const { return m_item; }

    void setItem(const MediaItem &item);

    /// Null until it is there, and when there is none.
    [[nodiscard]] const QImage &image() const { return m_image; }

    [[nodiscard]] bool hasImage() const { return !m_image.isNull(); }

Q_SIGNALS:
    void appStateChanged();
    void itemChanged();
    void imageChanged();

private:
    void restart();
    QCoro::Task<> load(MediaItem item);
    void show(const QImage &image);

    QPointer<AppState> m_appState;
    MediaItem m_item;
    QImage m_image;
    qint64 m_generation = 0;
};
