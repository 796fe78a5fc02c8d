// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/SharpNode.h"

SharpNode::SharpNode(SharpMaterial::Use use)
    : m_geometry(QSGGeometry::defaultAttributes_TexturedPoint2D(), 4)
    , m_material(use)
{
    setGeometry(&m_geometry);
    setMaterial(&m_material);
}

void SharpNode::setTexture(std::unique_ptr<QSGTexture> texture)
{
    m_material.setTexture(std::move(texture));
    markDirty(DirtyMaterial);
}

void SharpNode::setPlace(const QRectF &target, const QRectF &source, qreal pixelRatio)
{
    const QSizeF size = m_material.texture()->textureSize();
    const QRectF part(source.x() / size.width(), source.y() / size.height(),
                      source.width() / size.width(), source.height() / size.height());
    QSGGeometry::updateTexturedRectGeometry(&m_geometry, target, part);
    m_material.setScale(QVector2D(float(target.width() * pixelRatio / source.width()),
                                  float(target.height() * pixelRatio / source.height())));
    markDirty(DirtyGeometry | DirtyMaterial);
}
