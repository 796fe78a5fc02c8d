// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/AlignedItem.h"

#include <QQuickWindow>
#include <QTransform>

#include <cmath>

AlignedItem::AlignedItem(QQuickItem *parent)
    : QQuickItem(parent)
{
    followIn(window()); // the parent's, of which no change is told here
}

qreal AlignedItem::pixelRatio() const
{
    return window() ? window()->effectiveDevicePixelRatio() : 1;
}

/// On a graphics card the scene graph of Qt 6.4 stretches a window whose pixels are no whole number
/// of points over the next whole number of them.
QSizeF AlignedItem::pixelsPerPoint() const
{
    const QSizeF nominal(pixelRatio(), pixelRatio());
    if (!window() || window()->size().isEmpty() || m_rasterizer->isPainter()) {
        return nominal;
    }
    const QSizeF points = window()->size();
    const QSize pixels = (points * pixelRatio()).toSize();
    return {pixels.width() / points.width(), pixels.height() / points.height()};
}

QSizeF AlignedItem::inPoints(QSizeF pixels) const
{
    const QSizeF ratio = pixelsPerPoint();
    return {pixels.width() / ratio.width(), pixels.height() / ratio.height()};
}

bool AlignedItem::isOnlyMoved() const
{
    return itemTransform(nullptr, nullptr).type() <= QTransform::TxTranslate;
}

QPointF AlignedItem::onWholePixel(QPointF point) const
{
    const QTransform toWindow = itemTransform(nullptr, nullptr);
    if (toWindow.type() > QTransform::TxTranslate) {
        return point;
    }
    const QSizeF ratio = pixelsPerPoint();
    const QPointF origin(toWindow.dx(), toWindow.dy());
    const auto whole = [](qreal at, qreal pixels) { return std::round(at * pixels) / pixels; };
    return QPointF(whole(origin.x() + point.x(), ratio.width()),
                   whole(origin.y() + point.y(), ratio.height())) -
           origin;
}

void AlignedItem::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemSceneChange) {
        followIn(data.window);
    }
    QQuickItem::itemChange(change, data);
}

void AlignedItem::followIn(QQuickWindow *window)
{
    disconnect(m_frames);
    disconnect(m_rasterizerChanges);
    m_rasterizer = window ? Rasterizer::of(window) : nullptr;
    if (window) {
        m_rasterizerChanges =
            connect(m_rasterizer, &Rasterizer::changed, this, [this] { rasterizerChanged(); });
        m_frames = connect(window, &QQuickWindow::afterAnimating, this, &AlignedItem::follow);
    }
}

/// Nobody tells an item that an ancestor has moved.
void AlignedItem::follow()
{
    if (!isVisible()) {
        return;
    }
    const QPointF offset = onWholePixel({});
    if (offset != m_offset) {
        m_offset = offset;
        polish();
        update();
    }
}
