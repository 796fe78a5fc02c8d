// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/items/AlignedItem.h"

#include <QImage>

/// Shows a bitmap at one of its pixels per pixel of the screen, never resampled.
///
/// The bitmap's point `anchor` lies in the middle of the item, moved by `pan`. Only the tiles in
/// view become textures, so a bitmap of any size can be shown.
class PixelImage : public AlignedItem {
    Q_OBJECT
    Q_PROPERTY(QImage image READ image WRITE setImage NOTIFY imageChanged)
    Q_PROPERTY(QPointF anchor READ anchor WRITE setAnchor NOTIFY anchorChanged)
    Q_PROPERTY(QSizeF pan READ pan WRITE setPan NOTIFY panChanged)

public:
    explicit PixelImage(QQuickItem *parent = nullptr);

    [[nodiscard]] const QImage &image() const { return m_image; }

    void setImage(const QImage &image);

    /// In pixels of the bitmap, x to the right, y downward.
    [[nodiscard]] QPointF anchor() const { return m_anchor; }

    void setAnchor(QPointF anchor);

    /// In points.
    [[nodiscard]] QSizeF pan() const { return m_pan; }

    void setPan(QSizeF pan);

    /// The bitmap's extent in the item's coordinates, its corner on a whole pixel of the window.
    [[nodiscard]] QImage tileImage(QRect part) const;
    [[nodiscard]] QRectF imageRect() const;

Q_SIGNALS:
    void imageChanged();
    void anchorChanged();
    void panChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    QImage m_image;
    QPointF m_anchor;
    QSizeF m_pan{0, 0}; // by default a size is invalid, and -1 each way
    bool m_tilesAreOld = false;
};
