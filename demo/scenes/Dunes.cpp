// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"
#include "demo/painting/Terrain.h"

static float duneHeight(float x, float y, uint32_t seed)
{
    // Crests across the wind: steep in the lee, gentle to windward, broken by slow noise.
    const float bend = 0.5F * Noise::fractal(x * 2.1F, y * 2.1F, 3, seed);
    float sum = 0;
    for (int i = 0; i < 2; ++i) {
        const float waves = i == 0 ? 4.2F : 9.5F;
        const float phase =
            (0.55F * x + y) * waves + bend * (i == 0 ? 3.4F : 4.5F) + static_cast<float>(i) * 0.7F;
        const float saw = phase - std::floor(phase);
        const float shape = saw < 0.78F ? saw / 0.78F : (1 - saw) / 0.22F;
        const float round = shape * shape * (3 - 2 * shape);
        const float tall = 0.55F + 0.8F * Noise::gradient(x * 3.1F + static_cast<float>(i) * 9,
                                                          y * 3.1F, seed + 20);
        sum += mix(shape, round, 0.35F) * (i == 0 ? 0.085F : 0.022F) * std::max(tall, 0.1F);
    }
    return sum + 0.02F * Noise::fractal(x * 1.5F, y * 1.5F, 2, seed + 3);
}

// Sand at low sun. moment: 0 golden, 1 blue dusk.
Canvas Scenes::dunes(const View &view)
{
    const float dusk = clamp01(view.moment);
    Canvas canvas(view.width, view.height);
    Sky sky;
    sky.zenith = mix(srgb(0x4F86C0), srgb(0x3E4C86), dusk);
    sky.horizon = mix(srgb(0xF0D3A8), srgb(0xDF9FA0), dusk);
    sky.glow = mix(srgb(0xFFD08A), srgb(0xFF9E90), dusk) * 0.5F;
    sky.sun = {0, 0, 0};
    sky.sunX = -1.6F;
    sky.sunY = 0.3F;
    sky.gradient = 4;
    sky.cloudCover = 0.4F;
    sky.cloudScale = 0.55F;
    sky.cloudSeed = view.seed;
    sky.cloudLight = srgb(0xFFF0DE);
    sky.cloudShade = srgb(0xC4B5B0);
    for (int py = 0; py < view.height; ++py) {
        for (int px = 0; px < view.width; ++px) {
            canvas.at(px, py) =
                sky.light(view.sceneX(static_cast<float>(px)),
                          std::max(view.sceneY(static_cast<float>(py)) - 0.1F, 0.0F));
        }
    }
    Terrain terrain(Terrain::sizeFor(view),
                    [&](float x, float y) { return duneHeight(x, y, view.seed); });
    terrain.light(-1.0F, mix(0.19F, 0.16F, dusk), 0.16F);
    const Rgb sun = mix(Rgb{3.6F, 2.3F, 1.2F}, Rgb{0.75F, 0.5F, 0.55F}, dusk);
    const Rgb air = mix(srgb(0x6C7FA8), srgb(0x5A5F96), dusk) * 0.4F;
    const Rgb haze = mix(srgb(0xF2D3A6), srgb(0xC98F98), dusk);
    Terrain::Camera camera;
    camera.height = 0.17F;
    camera.tilt = 0.12F;
    camera.lens = 1.3F;
    camera.x = 0.5F + 0.03F * view.panX;
    terrain.paint(canvas, view, camera, [&](const Terrain::Point &p) {
        // Wind ripples, seen only near, and finer grain over them.
        const float ripple = std::sin(
            (p.y + 0.35F * p.x + 0.012F * Noise::fractal(p.x * 40, p.y * 40, 2, 5)) * 1100);
        const float nearby = std::exp(-p.distance * 7);
        const float grit = Noise::fractal(p.x * 900, p.y * 900, 2, view.seed + 4);
        const float lit = clamp01(p.facing + nearby * (0.16F * ripple + 0.10F * grit)) * p.sunlight;
        const Rgb sand = mix(srgb(0xC98D52), srgb(0xDDAE74),
                             0.5F + 0.4F * Noise::fractal(p.x * 12, p.y * 12, 3, 9));
        const Rgb light = sun * lit + air * (0.75F + 0.1F * grit);
        return mix(sand * light, haze,
                   clamp01(0.55F * (1 - std::exp(-p.distance * p.distance * 0.9F))));
    });
    return canvas;
}
