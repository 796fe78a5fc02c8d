// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"

#include <QPainter>

// Two minutes at the shore: the sea turns to smoke, the jetty's posts stay.
Canvas Scenes::longExposure(const View &view)
{
    Canvas canvas(view.width, view.height);
    const float horizon = 0.04F;
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py)) - horizon;
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            // Clouds drawn out towards one point by the wind.
            const float angle = std::atan2(x - 0.2F, std::fabs(y) + 0.16F);
            const float streak =
                Noise::fractal(angle * 3.4F, 0.7F * std::sqrt(x * x + y * y), 5, view.seed);
            Rgb light;
            if (y >= 0) {
                light =
                    mix(srgb(0xD8DBDF), srgb(0x5C6672), smoothStep(0.0F, 0.5F, y - 0.22F * streak));
            } else {
                const float near = -y;
                const float smoke = Noise::fractal(x * 1.6F, y * 6, 4, view.seed + 5);
                light = mix(srgb(0xCBD0D6), srgb(0x6A7480),
                            smoothStep(0.0F, 0.6F, near + 0.10F * smoke + 0.12F * streak));
            }
            canvas.at(px, py) = mix(light, srgb(0xE6E7E8), 0.75F * std::exp(-std::fabs(y) * 26));
        }
    }
    QImage drawing(view.width, view.height, QImage::Format_ARGB32_Premultiplied);
    drawing.fill(Qt::transparent);
    QPainter painter(&drawing);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(view.transform());
    painter.setPen(Qt::NoPen);
    for (int i = 22; i >= 0; --i) {
        const double depth = 0.42 + 0.24 * i;
        for (const double side : {-1.0, 1.0}) {
            const auto id = static_cast<uint32_t>(i * 2 + (side > 0));
            if (Noise::hash(id, view.seed, 3) < 0.13F) {
                continue; // some posts are long gone
            }
            const double x = 0.2 - 0.235 / depth + side * 0.072 / depth;
            const double foot = horizon - 0.19 / depth;
            const double tall = (0.105 + 0.035 * Noise::hash(id, view.seed, 4)) / depth;
            const double half = 0.0085 / depth;
            const double lean = 0.01 / depth * (Noise::hash(id, view.seed, 5) - 0.5);
            const int air = std::min(200, static_cast<int>(9.0 * i));
            QLinearGradient wood(x - half, 0, x + half, 0);
            wood.setColorAt(0, QColor(46 + air / 2, 46 + air / 2, 48 + air / 2));
            wood.setColorAt(0.6, QColor(16 + air / 2, 16 + air / 2, 18 + air / 2));
            wood.setColorAt(1, QColor(64 + air / 2, 64 + air / 2, 66 + air / 2));
            painter.setBrush(wood);
            painter.drawPolygon(QPolygonF({{x - half, foot},
                                           {x + half, foot},
                                           {x + half + lean, foot + tall},
                                           {x - half + lean, foot + tall}}));
            QLinearGradient mirror(0, foot, 0, foot - tall * 0.9);
            mirror.setColorAt(0, QColor(40 + air / 2, 42 + air / 2, 46 + air / 2, 170));
            mirror.setColorAt(1, QColor(90, 95, 100, 0));
            painter.setBrush(mirror);
            painter.drawRect(QRectF(x - half * 1.15, foot - tall * 0.9, half * 2.3, tall * 0.9));
        }
    }
    painter.end();
    canvas.draw(drawing);
    return canvas;
}
