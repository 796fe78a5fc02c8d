// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSGMaterial>
#include <QSGTexture>
#include <QVector2D>

#include <memory>

/// Draws a texture by the cubic filter of Catmull and Rom, for the scene graph's graphics cards.
/// Render thread only.
class SharpMaterial : public QSGMaterial {
public:
    /// The filter reads sixteen pixels where it enlarges, and up to 64 where it does not.
    enum class Use { Enlarge, Reduce };

    explicit SharpMaterial(Use use);

    void setTexture(std::unique_ptr<QSGTexture> texture);

    [[nodiscard]] QSGTexture *texture() const { return m_texture.get(); }

    /// Pixels of the window per pixel of the texture. For Use::Reduce 1/2 to 1, else not needed.
    void setScale(QVector2D scale) { m_scale = scale; }

    [[nodiscard]] QVector2D scale() const { return m_scale; }

    [[nodiscard]] QSGMaterialType *type() const override;
    [[nodiscard]] int compare(const QSGMaterial *other) const override;
    [[nodiscard]] QSGMaterialShader *
    createShader(QSGRendererInterface::RenderMode mode) const override;

private:
    Use m_use;
    std::unique_ptr<QSGTexture> m_texture;
    QVector2D m_scale{1, 1};
};
