// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Outline.h"
#include "demo/scenes/Scenes.h"
#include "demo/scenes/Stars.h"

#include "demo/painting/Noise.h"

#include <QPainter>

// The Milky Way over a wooded ridge, a lit tent below it.
Canvas Scenes::milkyWay(const View &view)
{
    Canvas canvas(view.width, view.height);
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py));
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            const float along = 0.62F * x + 0.78F * y;
            const float across =
                0.78F * x - 0.62F * y - 0.06F + 0.06F * Noise::gradient(along * 1.6F, 2, view.seed);
            const float cloud =
                0.5F + 0.75F * Noise::fractal(along * 5, across * 7, 6, view.seed + 3);
            const float dust = smoothStep(
                0.42F, 0.85F,
                0.55F + 0.8F * Noise::fractal(along * 3.2F + 9, across * 8, 6, view.seed + 8) -
                    2.2F * std::fabs(across - 0.015F));
            const float band = std::exp(-across * across * 42) *
                               (0.35F + 0.8F * smoothStep(0.6F, -0.4F, along + 0.1F));
            const float core =
                std::exp(-across * across * 90 - (along + 0.18F) * (along + 0.18F) * 9);
            Rgb light = mix(srgb(0x0E1730), srgb(0x23365A), smoothStep(0.5F, -0.35F, y));
            light += mix(srgb(0x7F8FB8), srgb(0xE8C6A6), core) *
                     (0.62F * band * cloud + 0.35F * core * cloud) * (1 - 0.85F * dust);
            light += srgb(0xB06A8A) * (0.10F * band * smoothStep(0.6F, 0.9F, cloud));
            light += srgb(0x4F8A5A) * (0.14F * std::exp(-(y + 0.3F) * (y + 0.3F) * 26) *
                                       (0.8F + 0.5F * Noise::fractal(x, y * 4, 2, 6)));
            light += srgb(0xFF9A50) *
                     (0.30F * std::exp(-(y + 0.36F) * 16 - (x - 0.5F) * (x - 0.5F) * 5) *
                      (y > -0.4F ? 1.0F : 0.0F));
            const float specks =
                Noise::hash(static_cast<uint32_t>(px), static_cast<uint32_t>(py), view.seed);
            light += Rgb{1, 0.95F, 0.9F} *
                     (0.35F * band * cloud * (1 - dust) * smoothStep(0.965F, 1.0F, specks));
            canvas.at(px, py) = light;
        }
    }
    addStars(canvas, view, 3600, 1);
    for (int px = 0; px < view.width; ++px) {
        const float x = view.sceneX(static_cast<float>(px));
        const float far = -0.30F + 0.07F * Outline::ridge(x, 1.3F, view.seed + 2);
        const float close = -0.40F + 0.03F * Outline::ridge(x, 1.0F, view.seed + 4) +
                            Outline::conifers(x, 0.17F, 0.03F, view.seed + 6) *
                                smoothStep(0.05F, 0.5F, std::fabs(x - 0.12F));
        for (int py = 0; py < view.height; ++py) {
            const float y = view.sceneY(static_cast<float>(py));
            Rgb &light = canvas.at(px, py);
            light = mix(light, srgb(0x0D1424), 0.9F * clamp01((far - y) / view.unit() + 0.5F));
            light = mix(light, srgb(0x04060B), clamp01((close - y) / view.unit() + 0.5F));
        }
    }
    const float tx = 0.12F;
    const float ty = -0.415F;
    QImage drawing(view.width, view.height, QImage::Format_ARGB32_Premultiplied);
    drawing.fill(Qt::transparent);
    QPainter painter(&drawing);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(view.transform());
    QLinearGradient fabric(tx, ty, tx, ty + 0.06);
    fabric.setColorAt(0, QColor(255, 214, 130));
    fabric.setColorAt(1, QColor(214, 110, 40));
    painter.setPen(Qt::NoPen);
    painter.setBrush(fabric);
    painter.drawPolygon(QPolygonF({{tx - 0.065, ty}, {tx - 0.01, ty + 0.06}, {tx + 0.065, ty}}));
    painter.setBrush(QColor(120, 52, 16, 120));
    painter.drawPolygon(QPolygonF({{tx - 0.01, ty + 0.06}, {tx + 0.002, ty}, {tx + 0.065, ty}}));
    painter.end();
    canvas.draw(drawing, 1.4F);
    canvas.addGlow(view.pixelX(tx), view.pixelY(ty + 0.02F), 0.3F / view.unit(),
                   srgb(0xFF9C46) * 0.45F);
    return canvas;
}
