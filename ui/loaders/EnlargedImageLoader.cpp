// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/EnlargedImageLoader.h"

EnlargedImageLoader::EnlargedImageLoader(QObject *parent)
    : ItemLoader(parent)
{
}

void EnlargedImageLoader::forget()
{
    show({});
}

QCoro::Task<> EnlargedImageLoader::load(MediaItem item)
{
    if (item.kind == MediaKind::video) {
        co_return;
    }
    const auto begun = generation();
    const QPointer self(this);

    const QImage image = co_await appState()->pipeline()->screenImage(
        item, appState()->screenMaxPixel(), stopToken());

    if (self && begun == generation()) {
        show(image);
    }
}

void EnlargedImageLoader::show(const QImage &image)
{
    if (m_image.cacheKey() == image.cacheKey()) {
        return;
    }
    m_image = image;
    Q_EMIT imageChanged();
}
