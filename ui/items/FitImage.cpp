// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/FitImage.h"

#include <QCoroFuture>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRendererInterface>
#include <QtConcurrent/qtconcurrentrun.h>

/// Bitmaps up to this many pixels are scaled at once: it takes less than a frame for a whole strip.
static constexpr qint64 pixelsScaledAtOnce = 512 * 512;

FitImage::FitImage(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

FitImage::~FitImage()
{
    m_wantedStop.request_stop();
}

void FitImage::setPool(ScalingPool *pool)
{
    if (m_pool == pool) {
        return;
    }
    m_pool = pool;
    wantCopy({});
    refresh();
    Q_EMIT poolChanged();
}

void FitImage::setImage(const QImage &image)
{
    if (m_image.cacheKey() == image.cacheKey()) {
        return;
    }
    m_image = image;
    refresh();
    Q_EMIT imageChanged();
}

void FitImage::setSmoothScaling(bool smooth)
{
    if (m_smoothScaling == smooth) {
        return;
    }
    m_smoothScaling = smooth;
    refresh();
    Q_EMIT smoothScalingChanged();
}

void FitImage::setFillMode(FillMode mode)
{
    if (m_fillMode == mode) {
        return;
    }
    m_fillMode = mode;
    refresh();
    Q_EMIT fillModeChanged();
}

void FitImage::setRadius(qreal radius)
{
    if (qFuzzyCompare(1 + m_radius, 1 + radius)) {
        return;
    }
    m_radius = radius;
    refresh();
    Q_EMIT radiusChanged();
}

PicturePlacement FitImage::placement() const
{
    const qreal ratio = window() ? window()->effectiveDevicePixelRatio() : 1;
    const auto exact = m_fillMode == FillMode::Fit
                           ? PicturePlacement::fitting(m_image.size(), size())
                           : PicturePlacement::cropping(m_image.size(), size());
    return exact.onWholePixels(ratio);
}

void FitImage::refresh()
{
    polish();
    update();
}

void FitImage::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        refresh();
    }
}

void FitImage::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        refresh();
    }
    QQuickItem::itemChange(change, data);
}

std::optional<FitImage::Copy> FitImage::neededCopy() const
{
    if (m_image.isNull() || !window() || size().isEmpty()) {
        return std::nullopt;
    }
    const qreal ratio = window()->effectiveDevicePixelRatio();
    const auto place = placement();
    const Copy copy{.imageKey = m_image.cacheKey(),
                    .source = place.source.toAlignedRect() & m_image.rect(),
                    .size = (place.target.size() * ratio).toSize(),
                    .radius = m_radius * ratio};
    const bool isSmaller =
        copy.size.width() < copy.source.width() || copy.size.height() < copy.source.height();
    const bool plainlyScaled =
        window()->rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
    if (copy.size.isEmpty() || !m_smoothScaling ||
        (m_radius <= 0 && !(plainlyScaled && isSmaller))) {
        return std::nullopt;
    }
    return copy;
}

QImage FitImage::makeCopy(const QImage &image, const Copy &copy)
{
    const QImage scaled =
        image.copy(copy.source).scaled(copy.size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (copy.radius <= 0) {
        return scaled;
    }
    QImage rounded(copy.size, QImage::Format_ARGB32_Premultiplied);
    rounded.fill(Qt::transparent);
    QPainter painter(&rounded);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(scaled);
    painter.drawRoundedRect(rounded.rect(), copy.radius, copy.radius);
    return rounded;
}

void FitImage::updatePolish()
{
    const auto copy = neededCopy();
    if (!copy) {
        m_copyImage = {};
        m_copy = {};
        wantCopy({});
        return;
    }
    if (*copy == m_wanted) {
        return;
    }
    wantCopy(*copy);
    if (qint64(copy->source.width()) * copy->source.height() <= pixelsScaledAtOnce) {
        m_copyImage = makeCopy(m_image, *copy);
        m_copy = *copy;
        update();
    } else if (m_pool) {
        makeCopyElsewhere(*copy, m_wantedStop.get_token());
    }
}

void FitImage::wantCopy(const Copy &copy)
{
    m_wantedStop.request_stop();
    m_wantedStop = std::stop_source();
    m_wanted = copy;
}

QCoro::Task<> FitImage::makeCopyElsewhere(Copy copy, std::stop_token stop)
{
    const QPointer self(this);
    const auto make = [image = m_image, copy, stop] {
        return stop.stop_requested() ? QImage() : makeCopy(image, copy);
    };
    const QImage image = co_await QtConcurrent::run(static_cast<QThreadPool *>(m_pool), make);
    if (!self || copy != m_wanted) {
        co_return;
    }
    m_copyImage = image;
    m_copy = copy;
    update();
}

QSGNode *FitImage::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    if (m_image.isNull() || size().isEmpty()) {
        delete old;
        return nullptr;
    }
    auto *node = static_cast<QSGImageNode *>(old);
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        m_textureKey = 0;
    }
    // A copy of this bitmap that is not yet of the newest size is better than the bitmap itself.
    const bool showsCopy = !m_copyImage.isNull() && m_copy.imageKey == m_image.cacheKey();
    const QImage &shown = showsCopy ? m_copyImage : m_image;
    const bool mipmapped = m_smoothScaling && !showsCopy;
    if (m_textureKey != shown.cacheKey() || m_mipmapped != mipmapped) {
        QQuickWindow::CreateTextureOptions options;
        options.setFlag(QQuickWindow::TextureHasMipmaps, mipmapped);
        options.setFlag(QQuickWindow::TextureIsOpaque, !shown.hasAlphaChannel());
        node->setTexture(window()->createTextureFromImage(shown, options));
        m_textureKey = shown.cacheKey();
        m_mipmapped = mipmapped;
    }
    const auto place = placement();
    node->setFiltering(QSGTexture::Linear);
    node->setMipmapFiltering(mipmapped ? QSGTexture::Linear : QSGTexture::None);
    node->setRect(place.target);
    node->setSourceRect(showsCopy ? QRectF(shown.rect()) : place.source);
    return node;
}
