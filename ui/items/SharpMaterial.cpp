// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/SharpMaterial.h"

#include <QSGMaterialShader>

#include <cstring>

using namespace Qt::StringLiterals;

namespace {

/// The uniform block of the shaders, by the rules of std140.
struct Uniforms {
    float matrix[16];
    float textureSize[2];
    float scale[2];
    float opacity;
};

class SharpShader : public QSGMaterialShader {
public:
    explicit SharpShader(SharpMaterial::Use use)
    {
        setShaderFileName(VertexStage, u":/Kestle/shaders/sharp.vert.qsb"_s);
        setShaderFileName(FragmentStage, use == SharpMaterial::Use::Enlarge
                                             ? u":/Kestle/shaders/enlarge.frag.qsb"_s
                                             : u":/Kestle/shaders/reduce.frag.qsb"_s);
    }

    bool updateUniformData(RenderState &state, QSGMaterial *material, QSGMaterial *) override
    {
        const auto *sharp = static_cast<SharpMaterial *>(material);
        const QSize size = sharp->texture()->textureSize();
        Uniforms uniforms{
            .matrix = {},
            .textureSize = {float(size.width()), float(size.height())},
            .scale = {sharp->scale().x(), sharp->scale().y()},
            .opacity = state.opacity(),
        };
        std::memcpy(uniforms.matrix, state.combinedMatrix().constData(), sizeof(uniforms.matrix));
        std::memcpy(state.uniformData()->data(), &uniforms, sizeof(uniforms));
        return true;
    }

    void updateSampledImage(RenderState &state, int, QSGTexture **texture, QSGMaterial *material,
                            QSGMaterial *) override
    {
        *texture = static_cast<SharpMaterial *>(material)->texture();
        (*texture)->commitTextureOperations(state.rhi(), state.resourceUpdateBatch());
    }
};

} // namespace

SharpMaterial::SharpMaterial(Use use)
    : m_use(use)
{
}

void SharpMaterial::setTexture(std::unique_ptr<QSGTexture> texture)
{
    // The filter that enlarges has the card blend neighbours; the other one weighs each by itself.
    texture->setFiltering(m_use == Use::Enlarge ? QSGTexture::Linear : QSGTexture::Nearest);
    texture->setHorizontalWrapMode(QSGTexture::ClampToEdge);
    texture->setVerticalWrapMode(QSGTexture::ClampToEdge);
    setFlag(Blending, texture->hasAlphaChannel());
    m_texture = std::move(texture);
}

QSGMaterialType *SharpMaterial::type() const
{
    static QSGMaterialType enlarging;
    static QSGMaterialType reducing;
    return m_use == Use::Enlarge ? &enlarging : &reducing;
}

int SharpMaterial::compare(const QSGMaterial *other) const
{
    // No two share a texture, so no two are drawn at once.
    const auto mine = reinterpret_cast<quintptr>(this);
    const auto theirs = reinterpret_cast<quintptr>(other);
    return mine == theirs ? 0 : mine < theirs ? -1 : 1;
}

QSGMaterialShader *SharpMaterial::createShader(QSGRendererInterface::RenderMode) const
{
    return new SharpShader(m_use);
}
