// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/painting/Rgb.h"

#include <QImage>

#include <vector>

/// A picture of linear light that the scenes are painted on.
class Canvas {
public:
    Canvas() = default;
    Canvas(int width, int height);

    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }
    [[nodiscard]] Rgb *row(int y) { return m_light.data() + static_cast<size_t>(y) * m_width; }
    [[nodiscard]] const Rgb *row(int y) const
    {
        return m_light.data() + static_cast<size_t>(y) * m_width;
    }
    [[nodiscard]] Rgb &at(int x, int y) { return row(y)[x]; }
    [[nodiscard]] const Rgb &at(int x, int y) const { return row(y)[x]; }

    /// The light between pixels; positions outside take the nearest edge.
    [[nodiscard]] Rgb sample(float x, float y) const;

    /// Lays a drawing (premultiplied, same size) over the light, sRGB taken to linear.
    void draw(const QImage &drawing, float exposure = 1);

    /// Three box passes of @p radius pixels: close to a Gaussian of that standard deviation.
    void blur(float radius);
    void blurAcross(float radius);
    void blurDown(float radius);

    /// The same light at another size, by area or bilinearly.
    [[nodiscard]] Canvas scaled(int width, int height) const;

    /// Adds an out-of-focus point of light: a disc of even light with a slightly brighter rim.
    void addDisc(float x, float y, float radius, const Rgb &light, float rim = 0.25F);

    /// Adds a soft glow that falls to nothing at @p radius pixels.
    void addGlow(float x, float y, float radius, const Rgb &light);

private:
    int m_width = 0;
    int m_height = 0;
    std::vector<Rgb> m_light;
};
