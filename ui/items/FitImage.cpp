// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/FitImage.h"

#include "ui/items/SharpNode.h"
#include "ui/items/SharpScaling.h"

#include <QCoroFuture>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QtConcurrent/qtconcurrentrun.h>

/// A copy is made at once when bitmap and copy together have at most so many pixels...
static constexpr qint64 pixelsScaledAtOnce = 2'500'000;
/// ... or so many for each thread where no card can filter, which need about half a frame.
static constexpr qint64 pixelsScaledByThread = 4'500'000;
/// Smaller ones the cards' filter, of eight by eight pixels, would not do justice.
static constexpr qreal smallestFilteredScale = 0.5;

FitImage::FitImage(QQuickItem *parent)
    : AlignedItem(parent)
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
    auto place = m_fillMode == FillMode::Fit ? PicturePlacement::fitting(m_image.size(), size())
                                             : PicturePlacement::cropping(m_image.size(), size());
    place.target =
        QRectF(onWholePixel(place.target.topLeft()), inPoints(place.pixelSize(pixelRatio())));
    return place;
}

void FitImage::refresh()
{
    polish();
    update();
}

void FitImage::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    AlignedItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        refresh();
    }
}

void FitImage::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        refresh();
    }
    AlignedItem::itemChange(change, data);
}

std::optional<FitImage::Copy> FitImage::neededCopy() const
{
    if (m_image.isNull() || !window() || size().isEmpty()) {
        return std::nullopt;
    }
    const auto place = placement();
    const Copy copy{.imageKey = m_image.cacheKey(),
                    .source = place.source.toAlignedRect() & m_image.rect(),
                    .size = place.pixelSize(pixelRatio()),
                    .radius = m_radius * pixelRatio()};
    const bool isScaled = copy.size != copy.source.size();
    if (!m_smoothScaling || (m_radius <= 0 && !(m_pool && isScaled))) {
        return std::nullopt;
    }
    return copy;
}

QImage FitImage::makeCopy(const QImage &image, const Copy &copy, QThreadPool *helpers)
{
    const QImage scaled = SharpScaling::scaled(image, copy.source, copy.size, helpers);
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
    if (isMadeAtOnce(*copy)) {
        m_copyImage = makeCopy(m_image, *copy, m_pool);
        m_copy = *copy;
        update();
    } else if (m_pool) {
        makeCopyElsewhere(*copy, m_wantedStop.get_token());
    }
}

bool FitImage::isMadeAtOnce(const Copy &copy) const
{
    const auto area = [](QSize size) { return qint64(size.width()) * size.height(); };
    const auto pixels = area(copy.source.size()) + area(copy.size);
    if (!rasterizer()->isProcessor()) {
        return pixels <= pixelsScaledAtOnce;
    }
    const auto helpers = m_pool ? m_pool->maxThreadCount() : 0;
    return pixels <= pixelsScaledByThread * (1 + helpers);
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
    const auto make = [image = m_image, copy, stop, pool = m_pool.data()] {
        return stop.stop_requested() ? QImage() : makeCopy(image, copy, pool);
    };
    const QImage image = co_await QtConcurrent::run(static_cast<QThreadPool *>(m_pool), make);
    if (!self || stop.stop_requested()) {
        co_return;
    }
    m_copyImage = image;
    m_copy = copy;
    update();
}

qreal FitImage::scale(const PicturePlacement &place) const
{
    const QSizeF shown = place.pixelSize(pixelRatio());
    return std::min(shown.width() / place.source.width(), shown.height() / place.source.height());
}

FitImage::Drawing FitImage::drawing(const PicturePlacement &place, bool isCopy) const
{
    const bool isWhole = place.source.topLeft() == place.source.topLeft().toPoint();
    if (isWhole && place.pixelSize(pixelRatio()) == place.source.size()) {
        return Drawing::Exact;
    }
    if (isCopy || !m_smoothScaling || rasterizer()->isProcessor()) {
        return Drawing::Plain;
    }
    if (scale(place) < smallestFilteredScale) {
        return Drawing::Mipmapped;
    }
    return scale(place) < 1 ? Drawing::Reduced : Drawing::Enlarged;
}

QSGNode *FitImage::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    if (m_image.isNull() || size().isEmpty()) {
        delete old;
        return nullptr;
    }
    auto place = placement();
    // A card scales the bitmap itself better than a copy that is not yet of the newest size.
    const bool isCopy = !m_copyImage.isNull() && m_copy.imageKey == m_image.cacheKey() &&
                        (m_copyImage.size() == place.pixelSize(pixelRatio()) || m_radius > 0 ||
                         rasterizer()->isProcessor());
    const QImage &shown = isCopy ? m_copyImage : m_image;
    if (isCopy) {
        place.source = shown.rect();
    }
    const auto drawing = this->drawing(place, isCopy);

    const bool isFiltered = drawing == Drawing::Enlarged || drawing == Drawing::Reduced;
    const bool isNew = !old || m_drawing != drawing;
    if (isNew) {
        delete old;
        if (isFiltered) {
            old = new SharpNode(drawing == Drawing::Enlarged ? SharpMaterial::Use::Enlarge
                                                             : SharpMaterial::Use::Reduce);
        } else {
            auto *node = window()->createImageNode();
            node->setOwnsTexture(true);
            node->setFiltering(drawing == Drawing::Exact ? QSGTexture::Nearest
                                                         : QSGTexture::Linear);
            node->setMipmapFiltering(drawing == Drawing::Mipmapped ? QSGTexture::Linear
                                                                   : QSGTexture::None);
            old = node;
        }
        m_drawing = drawing;
    }
    QSGTexture *texture = nullptr;
    if (isNew || m_textureKey != shown.cacheKey()) {
        QQuickWindow::CreateTextureOptions options;
        options.setFlag(QQuickWindow::TextureHasMipmaps, drawing == Drawing::Mipmapped);
        options.setFlag(QQuickWindow::TextureIsOpaque, !shown.hasAlphaChannel());
        texture = window()->createTextureFromImage(shown, options);
        m_textureKey = shown.cacheKey();
    }
    if (isFiltered) {
        auto *node = static_cast<SharpNode *>(old);
        if (texture) {
            node->setTexture(std::unique_ptr<QSGTexture>(texture));
        }
        node->setPlace(place.target, place.source, pixelRatio());
    } else {
        auto *node = static_cast<QSGImageNode *>(old);
        if (texture) {
            node->setTexture(texture);
        }
        node->setRect(place.target);
        node->setSourceRect(place.source);
    }
    return old;
}
