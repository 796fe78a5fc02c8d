// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Outline.h"
#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"
#include "demo/painting/Sky.h"

// Half a minute of traffic on a winding road at dusk.
Canvas Scenes::lightTrails(const View &view)
{
    Canvas canvas(view.width, view.height);
    Sky sky;
    sky.zenith = srgb(0x1C2F63);
    sky.horizon = srgb(0xC58A86);
    sky.glow = srgb(0xFF9A60) * 0.5F;
    sky.sun = {0, 0, 0};
    sky.sunX = -0.3F;
    sky.sunY = -0.02F;
    sky.gradient = 4.6F;
    sky.cloudCover = 0.4F;
    sky.cloudScale = 0.5F;
    sky.cloudSeed = view.seed;
    sky.cloudLight = srgb(0xC9788A);
    sky.cloudShade = srgb(0x3A4170);
    const float horizon = 0.08F;
    for (int px = 0; px < view.width; ++px) {
        const float x = view.sceneX(static_cast<float>(px));
        float crests[3];
        for (int i = 0; i < 3; ++i) {
            const float near = static_cast<float>(i) / 2;
            const float shape =
                Outline::ridge(x + 3 * near, 1.2F + near, view.seed + static_cast<unsigned>(i));
            crests[i] = mix(0.07F, -0.01F, near) + mix(0.05F, 0.03F, near) * shape +
                        (i == 2 ? Outline::conifers(x, 0.03F, 0.008F, 4) : 0);
        }
        for (int py = 0; py < view.height; ++py) {
            const float y = view.sceneY(static_cast<float>(py)) - horizon;
            Rgb light = sky.light(x, std::max(y, 0.0F) + 0.01F);
            for (int i = 0; i < 3; ++i) {
                const float near = static_cast<float>(i) / 2;
                const float crest = crests[i];
                light = mix(light, mix(srgb(0x6A6488), srgb(0x0D1220), 0.35F + 0.65F * near),
                            clamp01((crest - y) / view.unit() + 0.5F));
            }
            if (y < -0.005F) {
                const float near = -y;
                const float grass =
                    Noise::fractal(x * 4 / (0.1F + near), 1.5F / (0.05F + near), 5, view.seed + 5);
                const Rgb slope = mix(srgb(0x0E1518), srgb(0x2A3326), clamp01(0.4F + grass)) *
                                  (0.65F + 0.5F * near);
                light = mix(light, slope, smoothStep(0.0F, 0.02F, near));
            }
            canvas.at(px, py) = light;
        }
    }
    // The road: its middle swings from side to side and widens towards us.
    const auto middle = [&](float near) {
        return 0.34F * std::sin(2.2F + 1.5F / (0.16F + near)) * (0.12F + 1.25F * near) +
               0.05F * near;
    };
    for (int py = 0; py < view.height; ++py) {
        const float near = horizon - view.sceneY(static_cast<float>(py));
        if (near < 0.006F) {
            continue;
        }
        const float half = 0.30F * near;
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px)) - middle(near);
            const float cover = clamp01((half - std::fabs(x)) / view.unit() + 0.5F);
            if (cover > 0) {
                const float across = x / half;
                Rgb road = srgb(0x1B1E27) *
                           (0.9F + 0.35F * Noise::fractal(x * 60 / near * 0.3F, 9 / near, 3, 7));
                if (std::fabs(std::fabs(across) - 0.94F) < 0.018F) {
                    road = srgb(0x8F93A0) * 0.6F;
                }
                canvas.at(px, py) = mix(canvas.at(px, py), road, cover);
            }
        }
    }
    Canvas trails(view.width, view.height);
    const float stride = 1 + 2.4F * view.unit(); // steps of about a pixel or two
    for (uint32_t i = 0; i < 34; ++i) {
        const bool away = i % 2 == 0;
        const float lane = (away ? 1.0F : -1.0F) * (0.22F + 0.5F * Noise::hash(i, view.seed, 1));
        const float lift =
            0.03F + 0.12F * Noise::hash(i, view.seed, 2) * Noise::hash(i, view.seed, 3);
        const Rgb colour =
            away ? mix(Rgb{2.6F, 0.16F, 0.08F}, Rgb{2.4F, 0.6F, 0.1F},
                       Noise::hash(i, view.seed, 4) * 0.5F)
                 : mix(Rgb{2.6F, 2.3F, 1.8F}, Rgb{2.2F, 2.3F, 2.6F}, Noise::hash(i, view.seed, 4));
        const float strength = 0.25F + 0.75F * Noise::hash(i, view.seed, 5);
        for (float near = 0.012F; near < 0.75F; near *= stride) {
            const float x = view.pixelX(middle(near) + lane * 0.30F * near);
            const float y = view.pixelY(horizon - near + lift * near);
            if (x < 0 || y < 0 || x >= static_cast<float>(view.width) ||
                y >= static_cast<float>(view.height)) {
                continue;
            }
            const float radius = std::max(0.0045F * near / view.unit(), 0.7F);
            // Every step adds light over its own short way along the curve.
            const float step = std::max(near * (stride - 1) / view.unit(), 0.02F);
            trails.addDisc(x, y, radius,
                           colour * (strength * 0.55F * std::min(step / radius, 1.0F)), 0);
        }
    }
    Canvas glow = trails;
    glow.blur(0.012F / view.unit());
    for (int y = 0; y < view.height; ++y) {
        for (int x = 0; x < view.width; ++x) {
            canvas.at(x, y) += trails.at(x, y) + glow.at(x, y) * 0.8F;
        }
    }
    return canvas;
}
