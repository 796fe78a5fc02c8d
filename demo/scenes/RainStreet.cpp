// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

// A person under an umbrella, seen from behind; feet at the origin, one unit tall.
static QPainterPath walker(double stride)
{
    QPainterPath figure;
    figure.addEllipse(QPointF(0, 0.84), 0.055, 0.07);
    QPainterPath coat;
    coat.moveTo(-0.06, 0.79);
    coat.cubicTo(-0.15, 0.75, -0.15, 0.6, -0.17, 0.3);
    coat.lineTo(0.17, 0.3);
    coat.cubicTo(0.15, 0.6, 0.15, 0.75, 0.06, 0.79);
    coat.closeSubpath();
    figure = figure.united(coat);
    QPainterPath legs;
    legs.addPolygon(
        QPolygonF({{-0.12, 0.36}, {-0.02, 0.36}, {-0.03 - stride, 0.0}, {-0.12 - stride, 0.0}}));
    legs.addPolygon(
        QPolygonF({{0.01, 0.36}, {0.11, 0.36}, {0.10 + stride, 0.03}, {0.02 + stride, 0.03}}));
    figure = figure.united(legs);
    QPainterPath umbrella;
    umbrella.moveTo(-0.42, 0.88);
    umbrella.cubicTo(-0.36, 1.12, -0.12, 1.17, 0.03, 1.18);
    umbrella.cubicTo(0.2, 1.17, 0.44, 1.1, 0.48, 0.88);
    umbrella.cubicTo(0.40, 0.93, 0.33, 0.93, 0.26, 0.88);
    umbrella.cubicTo(0.18, 0.94, 0.1, 0.94, 0.03, 0.89);
    umbrella.cubicTo(-0.05, 0.94, -0.12, 0.94, -0.2, 0.88);
    umbrella.cubicTo(-0.27, 0.93, -0.34, 0.93, -0.42, 0.88);
    figure = figure.united(umbrella);
    QPainterPath shaft;
    shaft.addRect(QRectF(0.02, 0.6, 0.012, 0.6));
    return figure.united(shaft);
}

// Street lamps in the rain, the light on wet asphalt.
Canvas Scenes::rainStreet(const View &view)
{
    Canvas canvas(view.width, view.height);
    const float vanishX = 0.06F;
    const float vanishY = -0.02F;
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py));
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            const float mistAt = std::exp(
                -7 * ((x - vanishX) * (x - vanishX) + 1.4F * (y - vanishY) * (y - vanishY)));
            Rgb light = mix(srgb(0x0C1322), srgb(0x7A6A5A), 0.85F * mistAt);
            // House fronts on both sides run to the vanishing point.
            const float side = std::fabs(x - vanishX);
            const float roof = vanishY + side * (x < vanishX ? 0.95F : 0.8F) + 0.02F;
            if (y > vanishY - side * 0.2F &&
                y < roof + 0.05F * side *
                               std::floor(
                                   3 * Noise::hash(static_cast<uint32_t>(6 / (side + 0.09F)), 4))) {
                const float depth = 1 / (side + 0.05F);
                const float bay = depth * 3.0F;
                const float story = (y - vanishY) / std::max(side, 0.001F) * 5.5F;
                const auto cell = static_cast<uint32_t>(bay) * 57 +
                                  static_cast<uint32_t>(story + 8) + (x < vanishX ? 0 : 9000);
                const float fx = bay - std::floor(bay);
                const float fy = story - std::floor(story);
                const float fade = std::exp(-0.22F * depth);
                Rgb wall = mix(srgb(0x2A2422), srgb(0x161A24), Noise::hash(cell / 57, 2)) * 0.7F;
                const bool pane =
                    fx > 0.3F && fx < 0.72F && fy > 0.22F && fy < 0.8F && story > 0.2F;
                if (pane) {
                    wall = Noise::hash(cell, view.seed) > 0.66F
                               ? srgb(0xFFC880) * (0.5F + 0.7F * Noise::hash(cell, 3))
                               : srgb(0x0C1018);
                }
                if (story <= 0.2F && story > -0.8F &&
                    Noise::hash(static_cast<uint32_t>(bay) + (x < vanishX ? 0U : 77U), 8) > 0.45F) {
                    wall = mix(srgb(0xFFB765), srgb(0xBFE0FF),
                               Noise::hash(static_cast<uint32_t>(bay), 12) > 0.7F ? 1 : 0) *
                           0.9F;
                }
                light = mix(light, wall, 0.25F + 0.75F * fade);
            }
            canvas.at(px, py) = light;
        }
    }
    canvas.blur(0.0035F / view.unit());
    for (int i = 9; i >= 0; --i) {
        const float depth =
            0.16F + 0.16F * static_cast<float>(i) + 0.012F * static_cast<float>(i * i);
        for (const float side : {-1.0F, 1.0F}) {
            const float x = vanishX + side * 0.11F / depth;
            const float y = vanishY + 0.075F / depth;
            const Rgb colour = srgb(0xFFB45E) * (4.5F / (0.6F + depth));
            const int foot =
                std::min(view.height, static_cast<int>(view.pixelY(vanishY - 0.03F / depth)));
            const float half = 0.0014F / depth;
            for (int py = std::max(0, static_cast<int>(view.pixelY(y))); py < foot; ++py) {
                for (int px = static_cast<int>(view.pixelX(x - half));
                     px <= static_cast<int>(view.pixelX(x + half)); ++px) {
                    if (px >= 0 && px < view.width) {
                        canvas.at(px, py) *= 0.3F;
                    }
                }
            }
            canvas.addGlow(view.pixelX(x), view.pixelY(y), 0.10F / depth / view.unit(),
                           colour * 0.17F);
            canvas.addDisc(view.pixelX(x), view.pixelY(y),
                           std::max(0.0052F / depth / view.unit(), 1.5F), colour * 1.6F, 0.05F);
        }
    }
    for (uint32_t i = 0; i < 9; ++i) {
        const float depth = 0.5F + 1.5F * Noise::hash(i, view.seed, 44);
        const float x = vanishX - 0.045F / depth;
        const float y = vanishY - 0.022F / depth;
        const Rgb colour = i % 3 == 0 ? Rgb{5, 0.35F, 0.25F} : Rgb{5, 4.6F, 3.8F};
        for (const float side : {-0.011F, 0.011F}) {
            canvas.addGlow(view.pixelX(x + side / depth), view.pixelY(y),
                           0.03F / depth / view.unit(), colour * 0.4F);
            canvas.addDisc(view.pixelX(x + side / depth), view.pixelY(y),
                           std::max(0.0035F / depth / view.unit(), 1.2F), colour);
        }
    }
    // Wet ground: what stands above it, mirrored and drawn out.
    Canvas smear = canvas;
    smear.blurDown(0.035F / view.unit());
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py)) - vanishY;
        if (y >= 0) {
            continue;
        }
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            if (-y < 0.2F * std::fabs(x - vanishX)) {
                continue;
            }
            const float near = 0.02F - y;
            const float gx = (x - vanishX) / near;
            const float gy = 1 / near;
            const float cobbles = Noise::fractal(gx * 5, gy * 1.3F, 4, view.seed + 8);
            const float puddle =
                smoothStep(-0.05F, 0.16F, Noise::fractal(gx * 0.8F, gy * 0.4F, 3, view.seed + 9));
            const Rgb sharp = canvas.sample(view.pixelX(x + 0.006F * cobbles),
                                            view.pixelY(vanishY - y * 1.25F + 0.01F * cobbles));
            const Rgb soft = smear.sample(view.pixelX(x + 0.025F * cobbles),
                                          view.pixelY(vanishY - y * 1.5F + 0.06F * cobbles));
            const Rgb asphalt = srgb(0x14161C) * (0.7F + 0.8F * cobbles);
            canvas.at(px, py) = asphalt + mix(soft * (0.55F + 0.9F * clamp01(cobbles + 0.2F)),
                                              sharp * 0.62F, 0.7F * puddle);
        }
    }
    QImage drawing(view.width, view.height, QImage::Format_ARGB32_Premultiplied);
    drawing.fill(Qt::transparent);
    QPainter painter(&drawing);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(view.transform());
    painter.translate(-0.17 + 0.05 * view.moment, -0.40);
    painter.scale(0.34, 0.34);
    painter.fillPath(walker(0.03 + 0.05 * view.moment), QColor(9, 9, 13));
    painter.setOpacity(0.55);
    painter.scale(1, -0.8);
    painter.fillPath(walker(0.03), QColor(9, 9, 13));
    painter.end();
    canvas.draw(drawing);
    // Rain: short bright strokes, more of them where lamps light the air.
    for (uint32_t i = 0; i < 1400; ++i) {
        const float x = view.aspect() * (Noise::hash(i, view.seed, 71) - 0.5F);
        const float y = Noise::hash(i, view.seed, 72) - 0.5F;
        const float length =
            0.012F + 0.05F * Noise::hash(i, view.seed, 73) * Noise::hash(i, view.seed, 74);
        const Rgb behind = smear.sample(view.pixelX(x), view.pixelY(y));
        const Rgb light =
            (behind + Rgb{0.06F, 0.06F, 0.08F}) * (0.22F * Noise::hash(i, view.seed, 75));
        const int steps = static_cast<int>(length / view.unit());
        for (int s = 0; s < steps; ++s) {
            const int px = static_cast<int>(view.pixelX(x) + 0.12F * static_cast<float>(s));
            const int py = static_cast<int>(view.pixelY(y)) + s;
            if (px >= 0 && py >= 0 && px < view.width && py < view.height) {
                canvas.at(px, py) +=
                    light * std::sin(3.14F * static_cast<float>(s) / static_cast<float>(steps));
            }
        }
    }
    return canvas;
}
