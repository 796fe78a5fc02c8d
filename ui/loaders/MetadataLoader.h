// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "core/metadata/ImageMetadata.h"
#include "core/model/MediaItem.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <stop_token>

/// The capture settings of one item as texts. Those of the item before stay until the new ones
/// have been read. Main thread only.
class MetadataLoader : public QObject {
    Q_OBJECT
    Q_PROPERTY(AppState *appState READ appState WRITE setAppState NOTIFY appStateChanged REQUIRED)
    Q_PROPERTY(MediaItem item READ item WRITE setItem NOTIFY itemChanged REQUIRED)
    Q_PROPERTY(QStringList captureTexts READ captureTexts NOTIFY metaChanged)
    Q_PROPERTY(QString lensText READ lensText NOTIFY metaChanged)
    Q_PROPERTY(QStringList fujiTexts READ fujiTexts NOTIFY metaChanged)

public:
    explicit MetadataLoader(QObject *parent = nullptr);
    ~MetadataLoader() override;

    [[nodiscard]] AppState *appState() const { return m_appState; }

    void setAppState(AppState *appState);

    [[nodiscard]] const MediaItem &item() const { return m_item; }

    void setItem(const MediaItem &item);

    [[nodiscard]] QStringList captureTexts() const;
    [[nodiscard]] QString lensText() const;
    [[nodiscard]] QStringList fujiTexts() const;

Q_SIGNALS:
    void appStateChanged();
    void itemChanged();
    void metaChanged();

private:
    void restart();
    QCoro::Task<> load(MediaItem item, std::stop_token stop);

    QPointer<AppState> m_appState;
    MediaItem m_item;
    std::optional<ImageMetadata> m_meta;
    std::stop_source m_stop;
    qint64 m_generation = 0;
};
