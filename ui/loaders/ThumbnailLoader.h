// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/loaders/ItemLoader.h"

#include <QImage>

/// The small picture of one item, asked for once both properties are set. Main thread only.
class ThumbnailLoader : public ItemLoader {
    Q_OBJECT
    Q_PROPERTY(bool lookedAt READ isLookedAt WRITE setLookedAt NOTIFY lookedAtChanged)
    Q_PROPERTY(QImage image READ image NOTIFY imageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)
    Q_PROPERTY(bool failed READ failed NOTIFY failedChanged)

public:
    explicit ThumbnailLoader(QObject *parent = nullptr);

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
    void lookedAtChanged();
    void imageChanged();
    void failedChanged();

private:
    void forget() override;
    QCoro::Task<> load(MediaItem item) override;
    void show(const QImage &image, bool failed);

    bool m_isLookedAt = false;
    QImage m_image;
    bool m_failed = false;
};
