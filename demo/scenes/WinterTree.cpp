// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"

#include <QPainter>

// Branches, each a little thinner than the one it grows from.
static void grow(QPainter &painter, uint32_t seed, QPointF from, double angle, double length,
                 double width, int depth)
{
    QPointF at = from;
    double heading = angle;
    constexpr int pieces = 5;
    for (int i = 0; i < pieces; ++i) {
        const auto n = seed * 7 + static_cast<uint32_t>(i);
        heading += 0.34 * (Noise::hash(n, 1) - 0.5) + 0.03 * (M_PI / 2 - heading);
        const QPointF next = at + QPointF(std::cos(heading), std::sin(heading)) * (length / pieces);
        const double taper = width * (1 - 0.10 * i);
        painter.setPen(QPen(QColor(26, 25, 28), taper, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(at, next);
        at = next;
        if (depth > 0 && i >= 1 && Noise::hash(n, 2) > 0.25F) {
            const double side = Noise::hash(n, 3) > 0.5F ? 1 : -1;
            grow(painter, n * 31 + 17, at, heading + side * (0.45 + 0.5 * Noise::hash(n, 4)),
                 length * (0.5 + 0.25 * Noise::hash(n, 5)), taper * 0.55, depth - 1);
        }
    }
    if (depth > 0) {
        grow(painter, seed * 131 + 7, at, heading + 0.25, length * 0.72, width * 0.52, depth - 1);
        grow(painter, seed * 137 + 11, at, heading - 0.3, length * 0.7, width * 0.5, depth - 1);
    }
}

// A lone tree on a snowfield. moment: 0 fog by day, 1 night under a lamp with falling snow.
Canvas Scenes::winterTree(const View &view)
{
    const float night = clamp01(view.moment);
    Canvas canvas(view.width, view.height);
    const float rise = -0.24F;
    for (int px = 0; px < view.width; ++px) {
        const float x = view.sceneX(static_cast<float>(px));
        const float far = rise + 0.035F + 0.03F * Noise::fractal(x * 2.2F, 4, 4, view.seed + 5) +
                          0.012F * std::fabs(Noise::fractal(x * 24, 4, 3, view.seed + 6));
        const float ground =
            rise + 0.035F * Noise::fractal(x * 0.9F, 1, 3, view.seed + 8) + 0.02F * x;
        for (int py = 0; py < view.height; ++py) {
            const float y = view.sceneY(static_cast<float>(py));
            const float cloud = Noise::fractal(x * 1.1F, y * 1.8F, 4, view.seed);
            Rgb light =
                mix(srgb(0xD5DAE2), srgb(0xEDE6E0), smoothStep(0.4F, -0.3F, y + 0.2F * cloud));
            light = mix(light, srgb(0x1C2742) * (1.0F + 0.35F * cloud), night);
            light = mix(light, mix(srgb(0xB4BCC8), srgb(0x131B30), night),
                        0.75F * clamp01((far - y) / view.unit() + 0.5F));
            const float cover = clamp01((ground - y) / view.unit() + 0.5F);
            if (cover > 0) {
                const float near = ground - y;
                const float drift =
                    Noise::fractal(x * 3 / (0.25F + near), 2.2F / (0.12F + near), 5, view.seed + 9);
                Rgb snow = mix(srgb(0xE7EAF0), srgb(0xB9C4D6),
                               clamp01(0.35F + 0.9F * drift + 0.9F * near));
                const float pool = std::exp(
                    -5 * ((x - 0.18F) * (x - 0.18F) + 2.5F * (near - 0.05F) * (near - 0.05F)));
                const Rgb dark = srgb(0x32426B) * (0.55F + 0.35F * drift) +
                                 srgb(0xFFC47E) * (0.85F * pool * (0.75F + 0.6F * drift));
                snow = mix(snow, dark, night);
                light = mix(light, snow, cover);
            }
            canvas.at(px, py) = light;
        }
    }
    QImage drawing(view.width, view.height, QImage::Format_ARGB32_Premultiplied);
    drawing.fill(Qt::transparent);
    QPainter painter(&drawing);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(view.transform());
    grow(painter, view.seed + 3, {-0.16, rise - 0.04}, M_PI / 2 + 0.05, 0.22, 0.026, 6);
    for (int i = 0; i < 7; ++i) { // a fence, sinking into the snow
        const double x = 0.16 + 0.085 * i + 0.012 * Noise::hash(static_cast<uint32_t>(i), 61);
        const double lean = 0.012 * (Noise::hash(static_cast<uint32_t>(i), 62) - 0.5);
        painter.setPen(QPen(QColor(38, 36, 40), 0.009));
        painter.drawLine(QPointF(x, rise - 0.085 + 0.006 * i),
                         QPointF(x + lean, rise + 0.015 + 0.004 * i));
        painter.setPen(QPen(QColor(52, 50, 54), 0.0022));
        painter.drawLine(QPointF(x, rise - 0.006 + 0.004 * i),
                         QPointF(x + 0.085, rise - 0.005 + 0.0045 * i));
        painter.drawLine(QPointF(x, rise - 0.034 + 0.005 * i),
                         QPointF(x + 0.085, rise - 0.033 + 0.0052 * i));
    }
    if (night > 0.5F) {
        painter.setPen(QPen(QColor(20, 20, 26), 0.008));
        painter.drawLine(QPointF(0.18, rise - 0.05), QPointF(0.18, rise + 0.43));
        painter.drawLine(QPointF(0.18, rise + 0.43), QPointF(0.15, rise + 0.445));
    }
    painter.end();
    canvas.draw(drawing, night > 0.5F ? 0.6F : 1);
    if (night > 0.5F) {
        const float lx = view.pixelX(0.145F);
        const float ly = view.pixelY(rise + 0.435F);
        canvas.addGlow(lx, ly, 0.85F / view.unit(), srgb(0xFFB970) * 0.6F);
        canvas.addGlow(lx, ly, 0.16F / view.unit(), srgb(0xFFD9A0) * 2.5F);
        canvas.addDisc(lx, ly, 0.011F / view.unit(), {14, 10, 6}, 0);
        for (uint32_t i = 0; i < 900; ++i) {
            const float x = view.aspect() * (Noise::hash(i, view.seed, 81) - 0.5F);
            const float y = Noise::hash(i, view.seed, 82) - 0.5F;
            const float d2 = (x - 0.145F) * (x - 0.145F) + (y - rise - 0.4F) * (y - rise - 0.4F);
            const float near = Noise::hash(i, view.seed, 83);
            const float radius = 0.0012F + 0.010F * std::pow(near, 9.0F);
            const Rgb flake = mix(srgb(0x8FA0C8) * 0.35F, srgb(0xFFE0B0) * 1.6F, std::exp(-7 * d2));
            canvas.addDisc(view.pixelX(x), view.pixelY(y), std::max(radius / view.unit(), 0.9F),
                           flake * (0.0022F / radius * 0.6F), 0);
        }
    } else {
        // Fog softens everything but the tree.
        for (int py = 0; py < view.height; ++py) {
            for (int px = 0; px < view.width; ++px) {
                const float fog =
                    0.10F +
                    0.12F * clamp01(0.5F + Noise::fractal(view.sceneX(static_cast<float>(px)),
                                                          view.sceneY(static_cast<float>(py)) * 3,
                                                          3, 77));
                canvas.at(px, py) = mix(canvas.at(px, py), srgb(0xE8E8EA), fog);
            }
        }
    }
    return canvas;
}
