// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/PixelImage.h"

#include <QHash>
#include <QQuickWindow>
#include <QSGImageNode>

/// Large enough that a screen needs few tiles, small enough that little is uploaded that is not
/// in view.
static constexpr int tileSide = 512;

namespace {

/// A transform, if none, because without a graphics card tiles that come later are drawn where the
/// nearest node of a certain type says, of which a plain one is none.
class TileRoot : public QSGTransformNode {
public:
    QHash<QPoint, QSGImageNode *> tiles;
};

} // namespace

/// The @p part of @p image, which is kept alive, not copied.
static QImage view(const QImage &image, QRect part)
{
    if (image.depth() < 24) {
        return image.copy(part); // its pixels may be parts of bytes, or places in a table
    }
    const auto *bits = image.constScanLine(part.top()) + part.left() * (image.depth() / 8);
    const auto release = [](void *kept) { delete static_cast<QImage *>(kept); };
    return {bits,           part.width(), part.height(),    image.bytesPerLine(),
            image.format(), release,      new QImage(image)};
}

PixelImage::PixelImage(QQuickItem *parent)
    : AlignedItem(parent)
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
    AlignedItem::geometryChange(newGeometry, oldGeometry);
    update();
}

void PixelImage::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    AlignedItem::itemChange(change, data);
}

/// Qt's painter does not clear what an opaque picture leaves of a point that it covers in part.
QImage PixelImage::tileImage(QRect part) const
{
    const QImage tile = view(m_image, part);
    return rasterizer()->isPainter() ? tile.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                                     : tile;
}

QRectF PixelImage::imageRect() const
{
    const QSizeF anchor = inPoints({m_anchor.x(), m_anchor.y()});
    const QPointF exact(width() * 0.5 - anchor.width() + m_pan.width(),
                        height() * 0.5 - anchor.height() + m_pan.height());
    // A corner between two pixels of the window would have every pixel resampled.
    return {onWholePixel(exact), inPoints(m_image.size())};
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
    const QSizeF pixel = inPoints({1, 1});
    const QRectF place = imageRect();
    // Cut in floating point: a picture panned far out of sight would overflow integers.
    const QRectF inView = place.intersected(boundingRect()).translated(-place.topLeft());
    const QRect pixels = QRectF(inView.x() / pixel.width(), inView.y() / pixel.height(),
                                inView.width() / pixel.width(), inView.height() / pixel.height())
                             .toAlignedRect() &
                         m_image.rect();

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
                    tile->setTexture(window()->createTextureFromImage(tileImage(part)));
                    root->appendChildNode(tile);
                }
                const QPointF offset(part.x() * pixel.width(), part.y() * pixel.height());
                tile->setRect({place.topLeft() + offset, inPoints(part.size())});
                shown.insert({column, row}, tile);
            }
        }
    }
    qDeleteAll(root->tiles); // a node that is deleted leaves its parent
    root->tiles = shown;
    return root;
}
