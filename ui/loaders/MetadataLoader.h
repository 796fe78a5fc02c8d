// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/metadata/ImageMetadata.h"
#include "ui/loaders/ItemLoader.h"

#include <QStringList>

/// The capture settings of one item as texts. Those of the item before stay until the new ones
/// have been read. Main thread only.
class MetadataLoader : public ItemLoader {
    Q_OBJECT
    Q_PROPERTY(QStringList captureTexts READ captureTexts NOTIFY metaChanged)
    Q_PROPERTY(QString lensText READ lensText NOTIFY metaChanged)
    Q_PROPERTY(QStringList fujiTexts READ fujiTexts NOTIFY metaChanged)

public:
    explicit MetadataLoader(QObject *parent = nullptr);

    [[nodiscard]] QStringList captureTexts() const;
    [[nodiscard]] QString lensText() const;
    [[nodiscard]] QStringList fujiTexts() const;

Q_SIGNALS:
    void metaChanged();

private:
    QCoro::Task<> load(MediaItem item) override;

    std::optional<ImageMetadata> m_meta;
};
