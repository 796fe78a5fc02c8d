// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QPointF>
#include <QTransform>

#include <cstdint>

/// How a scene is framed: the canvas, and what the photographer did between two shots.
struct View {
    int width = 1500;
    int height = 1000;
    uint32_t seed = 1; ///< the place; the same seed is the same place
    float panX = 0;    ///< moved to the right, in heights of the long side's 2:3 frame
    float panY = 0;    ///< moved up
    float zoom = 1;
    float moment = 0; ///< seconds or mood, as the scene reads it

    [[nodiscard]] float aspect() const
    {
        return static_cast<float>(width) / static_cast<float>(height);
    }

    /// Scene units per pixel: the short side is one unit.
    [[nodiscard]] float unit() const
    {
        return 1.0F / (zoom * static_cast<float>(width < height ? width : height));
    }
    /// Scene position, origin in the middle, y upwards.
    [[nodiscard]] float sceneX(float x) const
    {
        return (x + 0.5F - 0.5F * static_cast<float>(width)) * unit() + panX;
    }
    [[nodiscard]] float sceneY(float y) const
    {
        return (0.5F * static_cast<float>(height) - y - 0.5F) * unit() + panY;
    }
    [[nodiscard]] float pixelX(float x) const
    {
        return (x - panX) / unit() + 0.5F * static_cast<float>(width) - 0.5F;
    }
    [[nodiscard]] float pixelY(float y) const
    {
        return 0.5F * static_cast<float>(height) - (y - panY) / unit() - 0.5F;
    }

    /// For QPainter: from scene units with y upwards to pixels.
    [[nodiscard]] QTransform transform() const
    {
        const double scale = 1.0 / unit();
        return {scale, 0, 0, -scale, 0.5 * width - panX * scale, 0.5 * height + panY * scale};
    }
};
