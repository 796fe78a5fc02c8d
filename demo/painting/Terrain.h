// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/painting/Canvas.h"
#include "demo/painting/Sky.h"
#include "demo/painting/View.h"

#include <functional>
#include <vector>

/// A square landscape of heights, looked at from a point above it.
class Terrain {
public:
    struct Camera {
        float x = 0.5F; ///< in the unit square
        float y = 0.02F;
        float height = 0.1F;
        float tilt = 0;      ///< of the horizon, in scene units, up
        float reach = 0.95F; ///< how far one sees, in the unit square
        float lens = 1;      ///< larger is longer
    };
    struct Point {
        float x, y, height;
        float distance;
        float slopeX, slopeY; ///< height per unit
        float sunlight;       ///< 0 in shadow, 1 in full light
        float facing;         ///< cosine to the sun
    };

    /// @p height gives heights in units of the square's side.
    Terrain(int size, const std::function<float(float x, float y)> &height);

    /// As many heights per side as a picture of @p view's size can show.
    [[nodiscard]] static int sizeFor(const View &view);

    /// Casts shadows for a sun in direction (@p x right, @p up, @p y forward).
    void light(float x, float up, float y);

    [[nodiscard]] float heightAt(float x, float y) const;

    /// Paints all ground that is seen over what the canvas holds.
    void paint(Canvas &canvas, const View &view, const Camera &camera,
               const std::function<Rgb(const Point &)> &colour) const;

private:
    [[nodiscard]] float sunAt(float x, float y) const;

    int m_size;
    std::vector<float> m_heights;
    std::vector<float> m_sun;
    float m_sunX = 0;
    float m_sunUp = 1;
    float m_sunY = 0;
};
