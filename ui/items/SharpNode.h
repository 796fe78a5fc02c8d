// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/items/SharpMaterial.h"

#include <QRectF>
#include <QSGGeometryNode>

/// A bitmap in the scene graph, drawn by a SharpMaterial. Render thread only.
class SharpNode : public QSGGeometryNode {
public:
    explicit SharpNode(SharpMaterial::Use use);

    void setTexture(std::unique_ptr<QSGTexture> texture);

    /// @p target in the item's points, @p source in pixels of the texture, which must be set;
    /// @p pixelRatio in pixels of the window per point.
    void setPlace(const QRectF &target, const QRectF &source, qreal pixelRatio);

private:
    QSGGeometry m_geometry;
    SharpMaterial m_material;
};
