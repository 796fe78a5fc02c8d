// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "core/model/MediaItem.h"

#include <QCoroTask>
#include <QImage>
#include <QObject>
#include <QPointer>

#include <stop_token>

/// The picture of the session's current item, as large as the screen. Starts anew whenever another
/// item becomes the current one: a cached picture at once, else the thumbnail as a substitute while
/// the picture is decoded. What was shown before stays until then. Clips have no picture here.
/// Main thread only.
class ScreenImageLoader : public QObject {
    Q_OBJECT
    Q_PROPERTY(AppState *appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)
    Q_PROPERTY(QImage image READ image NOTIFY imageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)
    Q_PROPERTY(bool isStale READ isStale NOTIFY isStaleChanged)
    Q_PROPERTY(bool failed READ failed NOTIFY failedChanged)

public:
    explicit ScreenImageLoader(QObject *parent = nullptr);
    ~ScreenImageLoader() override;

    [[nodiscard]] AppState *appState() const { return m_appState; }

    void setAppState(AppState *appState);

    [[nodiscard]] const QImage &image() const { return m_currentImage; }

    [[nodiscard]] bool hasImage() const { return !m_currentImage.isNull(); }

    /// Whether the image is a substitute that is about to be replaced.
    [[nodiscard]] bool isStale() const { return m_isStale; }

    /// Whether it turned out that the current item has no picture; what is shown is another's.
    [[nodiscard]] bool failed() const { return m_failed; }

Q_SIGNALS:
    void appStateChanged();
    void imageChanged();
    void isStaleChanged();
    void failedChanged();

private:
    void forgetSession();
    void follow();
    void dropLoading();
    QCoro::Task<> load(MediaItem item);
    void show(const QImage &image, bool stale);
    void setFailed(bool failed);

    QPointer<AppState> m_appState;
    std::optional<QString> m_itemID; ///< of the item that is shown or being loaded
    QImage m_currentImage;
    bool m_isStale = false;
    bool m_failed = false;
    qint64 m_generation = 0;
    std::stop_source m_stop;
};
