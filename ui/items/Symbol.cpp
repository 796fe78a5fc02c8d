// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/Symbol.h"

#include "ui/items/SymbolDrawing.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

Symbol::Symbol(QQuickItem *parent)
    : AlignedItem(parent)
{
    setFlag(ItemHasContents);
}

void Symbol::setKind(Kind kind)
{
    if (m_kind == kind) {
        return;
    }
    m_kind = kind;
    redraw();
    Q_EMIT kindChanged();
}

void Symbol::setColor(const QColor &color)
{
    if (m_color == color) {
        return;
    }
    m_color = color;
    redraw();
    Q_EMIT colorChanged();
}

void Symbol::redraw()
{
    m_textureIsOld = true;
    update();
}

void Symbol::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    AlignedItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        redraw();
    }
}

void Symbol::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemDevicePixelRatioHasChanged) {
        redraw();
    }
    AlignedItem::itemChange(change, data);
}

QSGNode *Symbol::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    const qreal side = std::min(width(), height());
    const int pixels = qRound(side * pixelRatio());
    if (pixels < 1) {
        delete old;
        m_textureIsOld = true;
        return nullptr;
    }
    auto *node = static_cast<QSGImageNode *>(old);
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        m_textureIsOld = true;
    }
    // A pixel on a pixel, but where it is turned.
    node->setFiltering(isOnlyMoved() ? QSGTexture::Nearest : QSGTexture::Linear);
    if (m_textureIsOld) {
        QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(pixels / SymbolDrawing::side, pixels / SymbolDrawing::side);
        SymbolDrawing::draw(m_kind, m_color, &painter);
        painter.end();
        node->setTexture(window()->createTextureFromImage(image));
        m_textureIsOld = false;
    }
    const QSizeF shown = inPoints(QSizeF(pixels, pixels));
    const QPointF corner((width() - shown.width()) / 2, (height() - shown.height()) / 2);
    node->setRect({onWholePixel(corner), shown});
    return node;
}
