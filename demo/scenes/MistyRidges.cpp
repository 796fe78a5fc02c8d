// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Outline.h"
#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"
#include "demo/painting/Sky.h"

// Ranges behind ranges at dawn: each nearer one is darker, and mist lies between them.
Canvas Scenes::mistyRidges(const View &view)
{
    Canvas canvas(view.width, view.height);
    const float late = clamp01(view.moment); // 0 before sunrise, 1 in the morning
    Sky sky;
    sky.zenith = mix(srgb(0x4B6690), srgb(0x6FA0CF), late);
    sky.horizon = mix(srgb(0xF3B187), srgb(0xFBE3BE), late);
    sky.glow = mix(srgb(0xFF9B62), srgb(0xFFDC9A), late) * 0.9F;
    sky.sun = {18, 13, 8};
    sky.sunX = 0.34F;
    sky.sunY = 0.11F + 0.12F * late;
    sky.gradient = 4.5F;
    sky.glowWidth = 11;
    sky.cloudCover = 0.5F;
    sky.cloudScale = 0.5F;
    sky.cloudSeed = view.seed + 3;
    sky.cloudLight = mix(srgb(0xFFB48A), srgb(0xFFF0DC), late);
    sky.cloudShade = mix(srgb(0x8E83A0), srgb(0xB3BCCB), late);

    constexpr int ranges = 7;
    const Rgb haze = mix(srgb(0xB98A8E), srgb(0xC3CBD4), late);
    const Rgb dark = mix(srgb(0x101B2B), srgb(0x14262E), late);
    for (int px = 0; px < view.width; ++px) {
        const float x = view.sceneX(static_cast<float>(px));
        float crest[ranges];
        float base[ranges];
        for (int i = 0; i < ranges; ++i) {
            const float near = static_cast<float>(i) / (ranges - 1);
            const float level = mix(0.13F, -0.44F, std::pow(near, 0.9F));
            const float slide = x + 0.6F * near * view.panX;
            base[i] = level + (0.16F - 0.05F * near) *
                                  Outline::ridge(slide, mix(0.8F, 1.3F, near),
                                                 view.seed + 31U * static_cast<unsigned>(i));
            crest[i] = base[i];
            if (i >= 3) {
                const float size = 0.011F * std::pow(2.05F, static_cast<float>(i - 3));
                crest[i] += Outline::conifers(slide, size, size * 0.24F,
                                              view.seed + 7U * static_cast<unsigned>(i));
            }
        }
        for (int py = 0; py < view.height; ++py) {
            const float y = view.sceneY(static_cast<float>(py));
            // Nothing is seen behind the nearest range that covers the pixel whole.
            int first = ranges;
            while (first > 0 && (crest[first - 1] - y) / view.unit() < 0.5F) {
                --first;
            }
            Rgb light = first > 0 ? Rgb{} : sky.light(x * 0.9F, (y + 0.06F) * 0.9F);
            for (int i = std::max(first - 1, 0); i < ranges; ++i) {
                const float edge = (crest[i] - y) / view.unit();
                if (edge <= -0.5F) {
                    continue;
                }
                const float near = static_cast<float>(i) / (ranges - 1);
                const float below = base[i] - y; // trees cast no steps into the mist
                const float towards = std::exp(-3.2F * (x - sky.sunX) * (x - sky.sunX));
                const Rgb air = mix(haze, sky.glow * 1.15F, 0.45F * towards * (1 - near));
                Rgb slope = mix(air, dark, 0.22F + 0.78F * std::pow(near, 0.75F));
                slope *=
                    1 + 0.22F * (1 - near) *
                            Noise::fractal(x * 9, y * 14, 3, view.seed + static_cast<unsigned>(i));
                // Mist gathers in the valley below each crest, in wisps.
                const float wisps =
                    0.5F + 0.6F * Noise::fractal(x * 2.2F + near * 5 + 0.1F * view.moment, y * 9, 4,
                                                 view.seed + 90 + static_cast<unsigned>(i));
                const float deep = smoothStep(0.0F, mix(0.1F, 0.17F, near), below);
                const float mist = clamp01(deep * (0.35F + 0.75F * wisps) * mix(0.8F, 0.45F, near));
                slope = mix(slope, air * 1.02F, mist);
                light = mix(light, slope, clamp01(edge + 0.5F));
            }
            canvas.at(px, py) = light;
        }
    }
    return canvas;
}
