// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "core/model/MediaItem.h"

#include <QCoroTask>
#include <QImage>
#include <QObject>
#include <QPointer>

/// The small picture of one item, asked for once both properties are set. Main thread only.
class ThumbnailLoader : public QObject {
    Q_OBJECT
    Q_PROPERTY(AppState *appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)
    Q_PROPERTY(MediaItem item READ item WRITE setItem NOTIFY itemChanged REQUIRED)
    Q_PROPERTY(bool lookedAt READ isLookedAt WRITE setLookedAt NOTIFY lookedAtChanged)
    Q_PROPERTY(QImage image READ image NOTIFY imageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)
    Q_PROPERTY(bool failed READ failed NOTIFY failedChanged)

public:
    explicit ThumbnailLoader(QObject *parent = nullptr);

    [[nodiscard]] AppState *appState() const { return m_appState; }

    void setAppState(AppState *appState);

    [[nodiscard]] const MediaItem &item() const { return m_item; }

    void setItem(const MediaItem &item);

    /// Whether it stands for the item that is looked at, and not for one among others: it then
    /// comes first.
    [[nodiscard]] bool isLookedAt() const { return m_isLookedAt; }

    void setLookedAt(bool lookedAt);

    /// Null until it is there, and when there is none.
    [[nodiscard]] const QImage &image() const { return m_image; }

    [[nodiscard]] bool hasImage() const { return !m_image.isNull(); }

    /// Whether it turned out that there is no picture.
    [[nodiscard]] bool failed() const { return m_failed; }

Q_SIGNALS:
    void appStateChanged();
    void itemChanged();
    void lookedAtChanged();
    void imageChanged();
    void failedChanged();

private:
    void restart();
    QCoro::Task<> load(MediaItem item);
    void show(const QImage &image, bool failed);

    QPointer<AppState> m_appState;
    MediaItem m_item;
    bool m_isLookedAt = false;
    QImage m_image;
    bool m_failed = false;
    qint64 m_generation = 0;
};
