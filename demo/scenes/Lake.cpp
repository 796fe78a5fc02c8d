// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Outline.h"
#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"
#include "demo/painting/Sky.h"

#include <array>

// A still mountain lake: the far shore, and the same once more in the water.
Canvas Scenes::lake(const View &view)
{
    Sky sky;
    sky.zenith = srgb(0x3F6FB0);
    sky.horizon = srgb(0xF1D9C3);
    sky.glow = srgb(0xFFD2A0) * 0.6F;
    sky.sun = {0, 0, 0};
    sky.sunX = -0.7F;
    sky.sunY = 0.25F;
    sky.gradient = 3.2F;
    sky.cloudCover = 0.5F;
    sky.cloudScale = 0.6F;
    sky.cloudSeed = view.seed + 2;
    sky.cloudLight = srgb(0xFFE6D0);
    sky.cloudShade = srgb(0xA5A9BD);
    const float shore = -0.07F;

    const auto crests = [&](float x) {
        std::array<float, 4> result{};
        for (int i = 0; i < 4; ++i) {
            const float near = static_cast<float>(i) / 3;
            const float shape = Outline::ridge(x + 0.3F * near, mix(0.9F, 1.8F, near),
                                               view.seed + 13U * static_cast<unsigned>(i));
            float crest = mix(0.27F, 0.05F, near) + mix(0.2F, 0.07F, near) * shape;
            crest *= i == 0 ? 1 : 0.55F + 0.5F * std::fabs(x + 0.15F) * (1.6F - near);
            if (i > 0) {
                const float size = mix(0.02F, 0.075F, near * near);
                crest =
                    std::max(crest, 0.01F) +
                    Outline::conifers(x, size, size * 0.2F, view.seed + static_cast<unsigned>(i));
            }
            result[static_cast<size_t>(i)] = crest;
        }
        return result;
    };
    const auto land = [&](float x, float y,
                          const std::array<float, 4> &crest) { // y above the shore
        Rgb light = sky.light(x, y + 0.03F);
        for (int i = 0; i < 4; ++i) {
            const float near = static_cast<float>(i) / 3;
            const float cover = clamp01((crest[static_cast<size_t>(i)] - y) / view.unit() + 0.5F);
            if (cover <= 0) {
                continue;
            }
            Rgb slope;
            if (i == 0) {
                // Rock and snow, lit from the left.
                const float e = 0.004F;
                const float face = Noise::ridged(x * 5, y * 6, 6, view.seed) -
                                   Noise::ridged((x - e) * 5 - 0.02F, y * 6, 6, view.seed);
                const float snow =
                    smoothStep(0.10F, 0.24F, y + 0.08F * Noise::fractal(x * 16, y * 16, 4, 8));
                const Rgb ground = mix(srgb(0x545A6B), srgb(0xE8E6EA), 0.85F * snow);
                slope = ground *
                        (srgb(0xB9A9B2) * 0.7F + srgb(0xFFD0A0) * clamp01(0.55F + 2.6F * face));
            } else {
                const float tone = 0.5F + Noise::fractal(x * 70, y * 90, 3, view.seed + 5);
                slope = mix(srgb(0x6E8598), mix(srgb(0x10201C), srgb(0x3B4A22), tone),
                            0.25F + 0.7F * near);
                if (i == 3) {
                    const float gold = smoothStep(
                        0.15F, 0.5F, Noise::fractal(x * 26, 3, 3, view.seed + 9) + 0.3F * tone);
                    slope = mix(slope, srgb(0xC98A2E), 0.6F * gold * smoothStep(0.0F, 0.03F, y));
                }
            }
            const float mist = std::exp(-y * 26) *
                               (0.55F + 0.6F * Noise::fractal(x * 3 + static_cast<float>(i), y * 14,
                                                              4, view.seed + 60)) *
                               (1 - 0.55F * near);
            light =
                mix(light, mix(slope, srgb(0xEBD9CC), clamp01(mist + 0.32F * (1 - near))), cover);
        }
        return light;
    };

    Canvas canvas(view.width, view.height);
    for (int px = 0; px < view.width; ++px) {
        const float x = view.sceneX(static_cast<float>(px));
        const auto crest = crests(x);
        for (int py = 0; py < view.height; ++py) {
            const float y = view.sceneY(static_cast<float>(py)) - shore;
            if (y < 0) {
                break;
            }
            canvas.at(px, py) = land(x, y, crest);
        }
    }
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py)) - shore;
        if (y >= 0) {
            continue;
        }
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            const float near = 0.05F + -y;
            const float wind =
                smoothStep(0.05F, 0.4F, Noise::fractal(x * 1.2F, y * 12, 3, view.seed + 70));
            const float rippleX = Noise::fractal(x * 6 / near, 5 / near, 3, view.seed + 71);
            const float shift = rippleX * (0.004F + 0.03F * -y) * (0.4F + 2.2F * wind);
            const float mirrored = std::max(-y * 0.97F + shift, 0.002F);
            Rgb light = canvas.sample(view.pixelX(x + 0.3F * shift), view.pixelY(shore + mirrored));
            light = light * mix(0.62F, 0.8F, clamp01(1 + 2 * y)) +
                    srgb(0x24405A) * (0.10F + 0.2F * wind);
            canvas.at(px, py) = mix(light, srgb(0x0B1410), 0.35F * std::exp(y * 160));
        }
    }
    // A few stones in the shallows, near and slightly out of focus.
    for (uint32_t i = 0; i < 26; ++i) {
        const float x = -0.85F + 1.1F * Noise::hash(i, view.seed, 1);
        const float y =
            -0.49F + 0.13F * Noise::hash(i, view.seed, 2) * Noise::hash(i, view.seed, 3);
        const float size =
            (0.02F + 0.05F * Noise::hash(i, view.seed, 4)) * (0.4F - 1.4F * (y + 0.06F));
        const int left = std::max(0, static_cast<int>(view.pixelX(x - size)));
        const int right = std::min(view.width - 1, static_cast<int>(view.pixelX(x + size)));
        for (int px = left; px <= right; ++px) {
            const float across = (view.sceneX(static_cast<float>(px)) - x) / size;
            const float rim = 0.42F * size * std::sqrt(std::max(0.0F, 1 - across * across)) *
                              (1 + 0.3F * Noise::fractal(across * 2, static_cast<float>(i), 3, 4));
            const int top = std::max(0, static_cast<int>(view.pixelY(y + rim)));
            const int bottom =
                std::min(view.height - 1, static_cast<int>(view.pixelY(y - 0.3F * rim)));
            for (int py = top; py <= bottom; ++py) {
                const float up = (view.sceneY(static_cast<float>(py)) - y) / std::max(rim, 1e-4F);
                const float grain =
                    Noise::fractal(across * 7, up * 3 + static_cast<float>(i), 4, 12);
                const float lit = clamp01(0.18F + 0.5F * up - 0.25F * across + 0.3F * grain);
                canvas.at(px, py) = mix(srgb(0x14171B), srgb(0xA79A8F), lit * lit);
            }
        }
    }
    return canvas;
}
