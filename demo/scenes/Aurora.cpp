// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Outline.h"
#include "demo/scenes/Scenes.h"
#include "demo/scenes/Stars.h"

#include "demo/painting/Noise.h"

// Northern lights over a frozen bay.
Canvas Scenes::aurora(const View &view)
{
    Canvas canvas(view.width, view.height);
    const float shore = -0.22F;
    const auto curtains = [&](float x, float y) {
        Rgb light = mix(srgb(0x050B1A), srgb(0x14304A), smoothStep(0.75F, 0.0F, y));
        for (uint32_t i = 0; i < 3; ++i) {
            const auto n = static_cast<float>(i);
            const float sway = view.moment * 0.08F + n * 1.7F;
            const float foot = 0.10F + 0.13F * n +
                               0.11F * Noise::fractal(x * 1.1F + sway, n * 5, 3, view.seed + i) +
                               0.12F * x * (i == 1 ? -1.0F : 1.0F);
            const float above = y - foot;
            const float folds =
                0.5F + 0.7F * Noise::fractal(
                                  x * 5 + 2 * Noise::gradient(x * 1.5F + sway, n, view.seed + 20),
                                  n * 3 + 0.4F * view.moment, 3, view.seed + 9 + i);
            const float rays =
                0.72F + 0.5F * Noise::gradient(x * 46, n * 7 + y * 0.6F, view.seed + 30);
            const float fall = above < 0 ? std::exp(above * 55) : std::exp(-above * (4.2F + n));
            const float strength = clamp01(folds * 1.4F - 0.25F) * rays * fall * (1.0F - 0.25F * n);
            const Rgb colour = mix(srgb(0x3DFF8A), srgb(0xA04CD8), smoothStep(0.05F, 0.42F, above));
            light += colour * (0.75F * strength);
        }
        return light;
    };
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py)) - shore;
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            if (y >= 0) {
                canvas.at(px, py) = curtains(x, y);
            }
        }
    }
    addStars(canvas, view, 1500, 0.8F);
    for (int px = 0; px < view.width; ++px) {
        const float x = view.sceneX(static_cast<float>(px));
        const float crest =
            0.02F + 0.16F * std::max(0.0F, 0.35F + Outline::ridge(x, 1.25F, view.seed + 5)) *
                        (0.5F + 0.7F * std::fabs(x - 0.1F));
        for (int py = 0; py < view.height; ++py) {
            const float y = view.sceneY(static_cast<float>(py)) - shore;
            if (y > 0) {
                const float snow =
                    smoothStep(0.03F, 0.14F, y + 0.05F * Noise::fractal(x * 18, y * 18, 4, 4)) *
                    clamp01(0.45F + 1.2F * Noise::fractal(x * 12 - y * 8, y * 10, 5, 6));
                const Rgb slope = mix(srgb(0x070D16), srgb(0x5E9A8C) * 0.7F, 0.75F * snow);
                canvas.at(px, py) =
                    mix(canvas.at(px, py), slope, clamp01((crest - y) / view.unit() + 0.5F));
            }
        }
    }
    Canvas above = canvas;
    above.blurDown(0.02F / view.unit());
    for (int py = std::max(0, static_cast<int>(view.pixelY(shore))); py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py)) - shore;
        const float near = 0.03F - y;
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            const float crack = Noise::fractal(x * 1.3F / near, 0.5F / near, 5, view.seed + 40);
            const float floes = smoothStep(-0.02F, 0.06F, crack);
            const Rgb mirror = above.sample(view.pixelX(x + 0.01F * crack),
                                            view.pixelY(shore - y * 1.1F + 0.02F * crack)) *
                               0.5F;
            const Rgb ice = srgb(0x6FA79A) * (0.22F + 0.16F * crack) + mirror * 0.25F;
            canvas.at(px, py) = mix(mirror, ice, 0.75F * floes);
        }
    }
    return canvas;
}
