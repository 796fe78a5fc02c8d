// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"
#include "demo/painting/Terrain.h"

// High mountains with snow. moment: 0 noon, 1 last light.
Canvas Scenes::alps(const View &view)
{
    const float late = clamp01(view.moment);
    Canvas canvas(view.width, view.height);
    Sky sky;
    sky.zenith = mix(srgb(0x2F66AE), srgb(0x39507F), late);
    sky.horizon = mix(srgb(0xA9CBE9), srgb(0xE9B39A), late);
    sky.glow = mix(srgb(0xFFF4E0), srgb(0xFFB27A), late) * 0.35F;
    sky.sun = {0, 0, 0};
    sky.sunX = 1.4F;
    sky.sunY = mix(0.9F, 0.25F, late);
    sky.gradient = 3.4F;
    sky.cloudCover = 0.5F;
    sky.cloudScale = 0.8F;
    sky.cloudSeed = view.seed + 17;
    sky.cloudLight = mix(Rgb{0.95F, 0.96F, 1}, srgb(0xF6B4A0), late);
    sky.cloudShade = mix(srgb(0x93A6BF), srgb(0x77708F), late);
    for (int py = 0; py < view.height; ++py) {
        for (int px = 0; px < view.width; ++px) {
            canvas.at(px, py) = sky.light(view.sceneX(static_cast<float>(px)),
                                          view.sceneY(static_cast<float>(py)) + 0.1F);
        }
    }

    Terrain terrain(Terrain::sizeFor(view), [&](float x, float y) {
        const float massif = smoothStep(0.12F, 0.62F, y) *
                             (0.75F + 0.5F * Noise::gradient(x * 2.2F, y * 1.3F, view.seed + 5));
        const float crests = Noise::ridged(x * 3.1F, y * 3.1F, 8, view.seed);
        const float floor = 0.016F * Noise::fractal(x * 9, y * 9, 5, view.seed + 50);
        return 0.25F * massif * std::pow(crests, 1.2F) + 0.02F + floor +
               0.05F * (1 - smoothStep(0.02F, 0.3F, y)) *
                   smoothStep(0.42F, 0.75F, std::fabs(x - 0.5F) * 2.4F);
    });
    const float sunUp = mix(0.75F, 0.21F, late);
    terrain.light(-0.9F, sunUp, -0.42F);

    const Rgb sun = mix(Rgb{1.45F, 1.36F, 1.2F}, Rgb{1.75F, 0.82F, 0.42F}, late);
    const Rgb air = mix(srgb(0x5C86BC), srgb(0x5D6794), late) * 0.62F;
    const Rgb distance = mix(srgb(0x9DBBDA), srgb(0xC29AA0), late) * 0.95F;
    Terrain::Camera camera;
    camera.height = 0.10F;
    camera.tilt = -0.12F;
    camera.lens = 1.5F;
    camera.x = 0.5F + 0.02F * view.panX;
    terrain.paint(canvas, view, camera, [&](const Terrain::Point &p) {
        const float steep = std::sqrt(p.slopeX * p.slopeX + p.slopeY * p.slopeY);
        const float detail = Noise::fractal(p.x * 160, p.y * 160, 5, view.seed + 77);
        const float fine = Noise::fractal(p.x * 620, p.y * 620, 3, view.seed + 79);
        const float snowLine = 0.07F + 0.035F * detail;
        const float snow = smoothStep(snowLine, snowLine + 0.045F, p.height) *
                           (1 - smoothStep(1.1F, 1.9F, steep + 0.9F * detail));
        Rgb rock = mix(srgb(0x5B5550), srgb(0x8A8078), 0.5F + 0.6F * detail + 0.3F * fine);
        const float meadow = (1 - smoothStep(0.05F, 0.09F, p.height + 0.02F * detail)) *
                             (1 - smoothStep(0.5F, 0.9F, steep));
        rock = mix(rock, mix(srgb(0x33431F), srgb(0x5C6B2C), 0.5F + detail), meadow);
        const float wood = smoothStep(0.05F, 0.25F, detail + 0.4F * fine) *
                           (1 - smoothStep(0.055F, 0.085F, p.height));
        rock = mix(rock, srgb(0x16241A), 0.85F * wood);
        const Rgb ground = mix(rock, Rgb{0.86F, 0.88F, 0.92F}, snow);
        const float bumps = clamp01(p.facing + 0.30F * detail * (1 - 0.6F * snow) + 0.12F * fine);
        const Rgb light = sun * (bumps * p.sunlight) + air * (0.6F + 0.25F * fine * (1 - snow));
        const float far = 1 - std::exp(-p.distance * 1.15F);
        const float valley = 0.25F * std::exp(-p.height * 22) * smoothStep(0.2F, 0.6F, p.distance);
        return mix(ground * light, distance, clamp01(0.62F * far * far + valley));
    });
    return canvas;
}
