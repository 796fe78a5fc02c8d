// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"
#include "demo/painting/Sky.h"

#include <QPainter>
#include <QPainterPath>

// Head and shoulders, seen in three-quarter profile to the right; shoulders reach the lower edge.
static QPainterPath bust()
{
    QPainterPath path;
    path.moveTo(-0.62, -1.4);
    path.lineTo(-0.62, -0.75);
    path.cubicTo(-0.56, -0.40, -0.40, -0.31, -0.20, -0.26);
    path.cubicTo(-0.13, -0.23, -0.12, -0.16, -0.13, -0.10);
    path.cubicTo(-0.24, -0.02, -0.27, 0.14, -0.20, 0.25); // the back of the head
    path.cubicTo(-0.13, 0.37, 0.06, 0.39, 0.14, 0.28);
    path.cubicTo(0.18, 0.22, 0.17, 0.17, 0.175, 0.13);  // forehead
    path.cubicTo(0.18, 0.11, 0.21, 0.07, 0.225, 0.045); // nose
    path.cubicTo(0.225, 0.03, 0.20, 0.03, 0.19, 0.025);
    path.cubicTo(0.20, 0.01, 0.203, 0.0, 0.19, -0.008); // lips
    path.cubicTo(0.20, -0.02, 0.198, -0.03, 0.183, -0.035);
    path.cubicTo(0.188, -0.06, 0.18, -0.09, 0.13, -0.095); // chin
    path.cubicTo(0.09, -0.10, 0.07, -0.12, 0.07, -0.17);
    path.cubicTo(0.08, -0.25, 0.16, -0.27, 0.26, -0.31);
    path.cubicTo(0.42, -0.37, 0.48, -0.5, 0.52, -0.75);
    path.lineTo(0.52, -1.4);
    path.closeSubpath();
    return path;
}

// A silhouette against a low sun that rims the hair. moment moves the head a little.
Canvas Scenes::portrait(const View &view)
{
    Canvas canvas(view.width, view.height);
    Sky sky;
    sky.zenith = srgb(0x6A5A78);
    sky.horizon = srgb(0xF7A860);
    sky.glow = srgb(0xFFB050) * 1.1F;
    sky.sun = {0, 0, 0};
    sky.sunX = 0.16F;
    sky.sunY = 0.12F;
    sky.gradient = 2.4F;
    sky.glowWidth = 7;
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py));
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            Rgb light = sky.light(x, std::max(y + 0.12F, 0.0F));
            const float hedge = -0.10F + 0.14F * Noise::fractal(x * 2.4F, 1, 3, view.seed);
            const Rgb field = mix(srgb(0x6B4A22), srgb(0xD08A3A),
                                  clamp01(0.5F + Noise::fractal(x * 3, y * 9, 2, view.seed + 2)));
            light = mix(light, field * (0.35F + 1.0F * std::exp(-5 * (x - 0.16F) * (x - 0.16F))),
                        smoothStep(hedge + 0.07F, hedge - 0.07F, y));
            canvas.at(px, py) = light;
        }
    }
    for (uint32_t i = 0; i < 110; ++i) {
        const float x = 1.5F * (Noise::hash(i, view.seed, 1) - 0.5F);
        const float y = -0.5F + 0.7F * Noise::hash(i, view.seed, 2);
        const float radius = (0.016F + 0.045F * Noise::hash(i, view.seed, 3)) / view.unit();
        canvas.addDisc(view.pixelX(x), view.pixelY(y), radius,
                       mix(srgb(0xFFC060), srgb(0xFFE9B0), Noise::hash(i, 5)) *
                           (0.25F * Noise::hash(i, view.seed, 6) * Noise::hash(i, 7)));
    }
    canvas.blur(0.006F / view.unit());

    QImage mask(view.width, view.height, QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(view.transform());
    painter.translate(-0.06 + 0.02 * view.moment, 0.03);
    painter.rotate(2.5 * view.moment);
    painter.scale(0.98, 0.98);
    painter.fillPath(bust(), Qt::black);
    // Loose hair that catches the light, and a knot at the back.
    painter.setBrush(Qt::black);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(-0.23, 0.22), 0.09, 0.085);
    for (uint32_t i = 0; i < 90; ++i) {
        const double a = 1.5 + 2.4 * Noise::hash(i, 91);
        const double r = 0.17 + 0.02 * Noise::hash(i, 92);
        const QPointF root(-0.03 + r * std::cos(a), 0.17 + r * std::sin(a));
        const double reach = 0.01 + 0.025 * Noise::hash(i, 93);
        const double bend = a + 2.2 * (Noise::hash(i, 94) - 0.4);
        QPainterPath hair(root);
        hair.quadTo(root + QPointF(reach * std::cos(a), reach * std::sin(a)),
                    root + QPointF(1.3 * reach * std::cos(bend), 1.3 * reach * std::sin(bend)));
        painter.strokePath(hair, QPen(QColor(0, 0, 0, 150), 0.0022));
    }
    painter.end();
    Canvas cover(view.width, view.height);
    for (int y = 0; y < view.height; ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(mask.constScanLine(y));
        for (int x = 0; x < view.width; ++x) {
            const float a = static_cast<float>(qAlpha(line[x])) / 255.0F;
            cover.at(x, y) = {a, a, a};
        }
    }
    Canvas wide = cover;
    wide.blur(0.006F / view.unit());
    for (int y = 0; y < view.height; ++y) {
        for (int x = 0; x < view.width; ++x) {
            const float a = cover.at(x, y).r;
            const float sx = view.sceneX(static_cast<float>(x));
            const float sy = view.sceneY(static_cast<float>(y));
            const float rim = a * (1 - wide.at(x, y).r);
            const float side =
                std::exp(-3.5F * ((sx - 0.16F) * (sx - 0.16F) + (sy - 0.05F) * (sy - 0.05F)));
            const float weave = Noise::fractal(sx * 60, sy * 60, 2, 3);
            const Rgb skin =
                srgb(0x130D0C) * (0.9F + 0.5F * weave + 0.8F * smoothStep(-0.1F, 0.3F, sy)) +
                srgb(0xFF9A48) * (rim * (0.35F + 2.6F * side));
            Rgb &light = canvas.at(x, y);
            light = mix(light, skin, a) + srgb(0xFF9C4A) * (0.05F * side);
        }
    }
    return canvas;
}
