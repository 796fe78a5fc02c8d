// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/metadata/ImageMetadata.h"
#include "ui/loaders/ItemLoader.h"

#include <QImage>

/// The picture of one item in full resolution, and the point of it to look at first. Both appear
/// together. Main thread only.
class FullImageLoader : public ItemLoader {
    Q_OBJECT
    Q_PROPERTY(QImage image READ image NOTIFY imageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)
    Q_PROPERTY(QPointF anchor READ anchor NOTIFY imageChanged)

public:
    explicit FullImageLoader(QObject *parent = nullptr);

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
    void imageChanged();

private:
    void forget() override;
    QCoro::Task<> load(MediaItem item) override;

    QImage m_fullImage;
    std::optional<QPointF> m_anchor;
};
