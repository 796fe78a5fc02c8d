// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/loaders/ItemLoader.h"

#include <QImage>

/// The picture of one given item, as large as the screen; none of a clip. Main thread only.
class EnlargedImageLoader : public ItemLoader {
    Q_OBJECT
    Q_PROPERTY(QImage image READ image NOTIFY imageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)

public:
    explicit EnlargedImageLoader(QObject *parent = nullptr);

    /// Null until it is there, and when there is none.
    [[nodiscard]] const QImage &image() const { return m_image; }

    [[nodiscard]] bool hasImage() const { return !m_image.isNull(); }

Q_SIGNALS:
    void imageChanged();

private:
    void forget() override;
    QCoro::Task<> load(MediaItem item) override;
    void show(const QImage &image);

    QImage m_image;
};
