// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/PixelImage.h"

#include <QHash>
#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

/// Large enough that a screen needs few tiles, small enough for every graphics driver.
static constexpr int tileSide = 1024;

namespace {

class TileRoot : public QSGNode {
public:
    QHash<QPoint, QSGImageNode *> tiles;
};

} // namespace

PixelImage::PixelImage(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setClip(true);
}

void PixelImage::setImage(const QImage &image)
{
    if (m_image.cacheKey() == image.cacheKey()) {
        return;
    }
    m_image = image;
    m_tilesAreOld = true;
    update();
    Q_EMIT imageChanged();
}

void PixelImage::setAnchor(QPointF anchor)
{
    if (m_anchor == anchor) {
        return;
    }
    m_anchor = anchor;
    update();
    Q_EMIT anchorChanged();
}

void PixelImage::setPan(QSizeF pan)
{
    if (m_pan == pan) {
        return;
    }
    m_pan = pan;
    update();
    Q_EMIT panChanged();
}

void PixelImage::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    update();
}

void PixelImage::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, data);
}

QRectF PixelImage::imageRect() const
{
    const qreal scale = window() ? window()->effectiveDevicePixelRatio() : 1;
    const QPointF exact(width() * 0.5 - m_anchor.x() / scale + m_pan.width(),
                        height() * 0.5 - m_anchor.y() / scale + m_pan.height());
    // A corner between two pixels of the window would have every pixel resampled.
    const QPointF inWindow = mapToScene(exact) * scale;
    const QPointF onPixel(std::round(inWindow.x()) / scale, std::round(inWindow.y()) / scale);
    return {mapFromScene(onPixel), QSizeF(m_image.size()) / scale};
}

QSGNode *PixelImage::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *root = static_cast<TileRoot *>(old);
    if (m_image.isNull() || m_tilesAreOld) {
        delete root;
        root = nullptr;
        m_tilesAreOld = false;
    }
    if (m_image.isNull()) {
        return nullptr;
    }
    if (!root) {
        root = new TileRoot;
    }
    const qreal scale = window()->effectiveDevicePixelRatio();
    const QRectF place = imageRect();
    // Cut in floating point: a picture panned far out of sight would overflow integers.
    const QRectF inView = place.intersected(boundingRect()).translated(-place.topLeft());
    const QRect pixels =
        QRectF(inView.topLeft() * scale, inView.size() * scale).toAlignedRect() & m_image.rect();

    QHash<QPoint, QSGImageNode *> shown;
    if (!inView.isEmpty() && !pixels.isEmpty()) {
        for (int row = pixels.top() / tileSide; row <= pixels.bottom() / tileSide; ++row) {
            for (int column = pixels.left() / tileSide; column <= pixels.right() / tileSide;
                 ++column) {
                const QRect part =
                    QRect(column * tileSide, row * tileSide, tileSide, tileSide) & m_image.rect();
                QSGImageNode *tile = root->tiles.take({column, row});
                if (!tile) {
                    tile = window()->createImageNode();
                    tile->setOwnsTexture(true);
                    tile->setFiltering(QSGTexture::Nearest);
                    tile->setTexture(window()->createTextureFromImage(m_image.copy(part)));
                    root->appendChildNode(tile);
                }
                tile->setRect({place.topLeft() + QPointF(part.topLeft()) / scale,
                               QSizeF(part.size()) / scale});
                shown.insert({column, row}, tile);
            }
        }
    }
    qDeleteAll(root->tiles); // a node that is deleted leaves its parent
    root->tiles = shown;
    return root;
}
