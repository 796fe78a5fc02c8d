// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Outline.h"
#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"
#include "demo/painting/Sky.h"

// Open water towards the sun. moment counts seconds; its whole tens choose the hour:
// 0 sunset, 10 blue hour, 20 silver midday.
Canvas Scenes::sea(const View &view)
{
    const int hour = static_cast<int>(view.moment / 10);
    const float seconds = view.moment - 10 * static_cast<float>(hour);
    Sky sky;
    sky.sunX = 0.12F;
    sky.cloudSeed = view.seed;
    sky.cloudScale = 0.42F;
    if (hour == 0) {
        sky.zenith = srgb(0x2F4E86);
        sky.horizon = srgb(0xF49A5C);
        sky.glow = srgb(0xFF8A3C) * 1.3F;
        sky.sun = {42, 24, 9};
        sky.sunY = 0.075F;
        sky.sunSize = 0.99955F;
        sky.gradient = 4.6F;
        sky.glowWidth = 9;
        sky.cloudCover = 0.52F;
        sky.cloudLight = srgb(0xFFA873);
        sky.cloudShade = srgb(0x5F5575);
    } else if (hour == 1) {
        sky.zenith = srgb(0x1B2A55);
        sky.horizon = srgb(0x8C7FA8);
        sky.glow = srgb(0xE08FA0) * 0.4F;
        sky.sun = {0, 0, 0};
        sky.sunY = -0.05F;
        sky.gradient = 3.6F;
        sky.cloudCover = 0.45F;
        sky.cloudLight = srgb(0xB78BA6);
        sky.cloudShade = srgb(0x39406A);
    } else {
        sky.zenith = srgb(0x4E7396);
        sky.horizon = srgb(0xC5D3DC);
        sky.glow = srgb(0xFFF8EA) * 0.8F;
        sky.sun = {60, 58, 52};
        sky.sunY = 0.62F;
        sky.gradient = 2.5F;
        sky.cloudCover = 0.58F;
        sky.cloudLight = {1.1F, 1.1F, 1.08F};
        sky.cloudShade = srgb(0x74818E);
    }
    const float horizon = -0.06F;
    const float sunWidth = hour == 2 ? 45.0F : 130.0F;
    const Rgb far = mix(sky.horizon, srgb(0x232433), 0.62F);
    std::vector<float> headland;
    for (int px = 0; px < view.width; ++px) {
        const float x = view.sceneX(static_cast<float>(px));
        const float rise = smoothStep(0.35F, 0.85F, x + 0.1F * Outline::ridge(x, 2.5F, view.seed));
        const float rocks = Outline::ridge(x, 9, view.seed + 4) * smoothStep(0.3F, 0.6F, x);
        headland.push_back(0.028F * rise + 0.006F * rocks);
    }
    Canvas canvas(view.width, view.height);
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py)) - horizon;
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            if (y >= 0) {
                const float edge = (headland[static_cast<size_t>(px)] - y) / view.unit();
                canvas.at(px, py) = mix(sky.light(x, y), far, clamp01(edge + 0.5F));
                continue;
            }
            const float down = -y;
            const float distance = 0.16F / (down + 0.0015F);
            const float wx = x * distance;
            const float wy = distance;
            // Waves: swell, chop and ripples; what is finer than a pixel becomes roughness.
            float slopeX = 0;
            float slopeY = 0;
            float rough = 0.012F;
            float scale = 1.1F;
            float tall = 0.10F;
            for (int i = 0; i < 7; ++i) {
                const float period = distance * view.unit() / std::max(down, 0.004F) * 0.4F * scale;
                const float seen = 1 - smoothStep(0.25F, 1.0F, period);
                const float px1 = wx * scale + 0.23F * seconds * static_cast<float>(i + 1);
                const float py1 = wy * scale * 1.35F + 0.45F * seconds;
                if (seen > 0) {
                    const auto seed = view.seed + static_cast<uint32_t>(i) * 3;
                    slopeX += seen * tall * Noise::gradient(px1, py1, seed);
                    slopeY += seen * tall * Noise::gradient(px1 + 37, py1 + 11, seed);
                }
                rough += (1 - seen) * tall * 0.45F;
                scale *= 2.1F;
                tall *= 0.78F;
            }
            const float grazing = 1 / (1 + 7 * distance * 0.05F);
            const float nx = slopeX * 0.55F;
            const float up =
                std::fabs(down + 2 * slopeY * mix(0.16F, 0.55F, grazing) * 0.9F) + 0.012F;
            const float fresnel = 0.04F + 0.96F * std::pow(1 - clamp01(up * 1.15F), 5.0F);
            Rgb light = sky.light(x + nx, up, false) * fresnel;
            const Rgb deep = mix(srgb(0x0E2433), sky.zenith, 0.12F) * (hour == 1 ? 0.35F : 0.7F);
            light += deep * (1 - fresnel);
            const float ax = (x + nx * 2.4F - sky.sunX);
            const float ay = (up - sky.sunY) * (hour == 2 ? 0.5F : 0.33F);
            const float glint =
                std::exp(-(ax * ax + ay * ay) * sunWidth / (1 + 60 * rough * rough));
            light += sky.sun * (glint * 0.16F * (0.3F + 0.7F * smoothStep(-0.01F, 0.035F, slopeY)));
            const float haze = std::exp(-down * 34);
            canvas.at(px, py) = mix(light, sky.light(x, 0.01F, false) * 0.9F, 0.75F * haze);
        }
    }
    return canvas;
}
