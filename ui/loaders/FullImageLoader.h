// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "core/metadata/ImageMetadata.h"
#include "core/model/MediaItem.h"

#include <QCoroTask>
#include <QImage>
#include <QObject>
#include <QPointer>

#include <stop_token>

/// The picture of one item in full resolution, and the point of it to look at first. Both appear
/// together. Main thread only.
class FullImageLoader : public QObject {
    Q_OBJECT
    Q_PROPERTY(AppState *appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)
    Q_PROPERTY(MediaItem item READ item WRITE setItem NOTIFY itemChanged REQUIRED)
    Q_PROPERTY(QImage image READ image NOTIFY imageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)
    Q_PROPERTY(QPointF anchor READ anchor NOTIFY imageChanged)

public:
    explicit FullImageLoader(QObject *parent = nullptr);
    ~FullImageLoader() override;

    [[nodiscard]] AppState *appState() const { return m_appState; }

    void setAppState(AppState *appState);

    [[nodiscard]] const MediaItem &item() const { return m_item; }

    void setItem(const MediaItem &item);

    /// Null until it is there, and when there is none.
    [[nodiscard]] const QImage &image() const { return m_fullImage; }

    [[nodiscard]] bool hasImage() const { return !m_fullImage.isNull(); }

    /// In pixels of the image: the subject that the camera recorded, else the middle.
    [[nodiscard]] QPointF anchor() const;

    /// The recorded subject, when it can be told where it lies in the upright picture: it is given
    /// in the stored pixels, which are those of the upright picture for orientation 1 only.
    [[nodiscard]] static std::optional<QPointF>
    anchorOf(const std::optional<ImageMetadata> &metadata);

Q_SIGNALS:
    void appStateChanged();
    void itemChanged();
    void imageChanged();

private:
    void restart();
    QCoro::Task<> load(MediaItem item, std::stop_token stop);

    QPointer<AppState> m_appState;
    MediaItem m_item;
    QImage m_fullImage;
    std::optional<QPointF> m_anchor;
    std::stop_source m_stop;
    qint64 m_generation = 0;
};
