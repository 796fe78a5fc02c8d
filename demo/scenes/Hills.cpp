// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"
#include "demo/painting/Terrain.h"

// Rolling fields in spring, low sun from the side, cypresses along a lane.
Canvas Scenes::hills(const View &view)
{
    Canvas canvas(view.width, view.height);
    Sky sky;
    sky.zenith = srgb(0x3F79BE);
    sky.horizon = srgb(0xE9DCC0);
    sky.glow = srgb(0xFFE2B0) * 0.5F;
    sky.sun = {0, 0, 0};
    sky.sunX = 1.5F;
    sky.sunY = 0.4F;
    sky.gradient = 3.6F;
    sky.cloudCover = 0.55F;
    sky.cloudScale = 0.75F;
    sky.cloudSeed = view.seed + 12;
    sky.cloudLight = srgb(0xFFF4E4);
    sky.cloudShade = srgb(0x9AA4B8);
    for (int py = 0; py < view.height; ++py) {
        for (int px = 0; px < view.width; ++px) {
            canvas.at(px, py) =
                sky.light(view.sceneX(static_cast<float>(px)),
                          std::max(view.sceneY(static_cast<float>(py)) - 0.12F, 0.0F) + 0.01F);
        }
    }
    struct Tree {
        float x, y;
    };
    std::vector<Tree> trees;
    for (int i = 0; i < 13; ++i) {
        const float t = static_cast<float>(i) / 12;
        trees.push_back({0.46F + 0.11F * t + 0.025F * std::sin(5 * t), 0.30F + 0.16F * t});
    }
    for (uint32_t i = 0; i < 12; ++i) {
        trees.push_back({0.28F + 0.5F * Noise::hash(i, view.seed, 5),
                         0.38F + 0.5F * Noise::hash(i, view.seed, 6)});
    }
    Terrain terrain(Terrain::sizeFor(view), [&](float x, float y) {
        float h = 0.06F * Noise::fractal(x * 4.2F, y * 5.2F, 2, view.seed) +
                  0.02F * Noise::gradient(x * 8, y * 8, view.seed + 9);
        h += 0.04F * smoothStep(0.5F, 1.0F, y);
        for (const auto &tree : trees) {
            const float d = std::hypot(x - tree.x, y - tree.y) / 0.0042F;
            if (d < 1) {
                h += 0.026F * (1 - d * d * d);
            }
        }
        return h;
    });
    terrain.light(0.95F, 0.30F, 0.05F);
    const Rgb sun{2.7F, 2.05F, 1.2F};
    const Rgb air = srgb(0x6F8FC0) * 0.42F;
    Terrain::Camera camera;
    camera.height = 0.12F;
    camera.tilt = 0.10F;
    camera.lens = 1.45F;
    camera.x = 0.5F + 0.03F * view.panX;
    terrain.paint(canvas, view, camera, [&](const Terrain::Point &p) {
        const float plots = Noise::gradient(p.x * 7 + 0.6F * Noise::gradient(p.x * 5, p.y * 5, 3),
                                            p.y * 9, view.seed + 20);
        const float rows = std::sin((p.x * 0.9F + p.y * 0.35F) * 900) * std::exp(-p.distance * 5);
        const float tufts = Noise::fractal(p.x * 320, p.y * 320, 4, 14);
        Rgb field = mix(srgb(0x5E7F2A), srgb(0x94A83C), 0.5F + 0.5F * tufts);
        if (plots > 0.18F) {
            field = mix(srgb(0xB9A04A), srgb(0xD9C277), 0.5F + 0.6F * tufts + 0.15F * rows);
        } else if (plots < -0.25F) {
            field = mix(srgb(0x6B4A30), srgb(0x8A6644), 0.5F + 0.4F * tufts + 0.3F * rows);
        } else {
            field = field * (1 + 0.12F * rows);
        }
        for (const auto &tree : trees) {
            if (std::fabs(p.x - tree.x) < 0.0045F && std::fabs(p.y - tree.y) < 0.0045F) {
                field = srgb(0x1C2E16) * (0.8F + tufts);
            }
        }
        const Rgb light = sun * (clamp01(p.facing + 0.10F * tufts) * p.sunlight) + air * 0.8F;
        const float far = 1 - std::exp(-p.distance * p.distance * 1.1F);
        return mix(field * light, srgb(0xC2BCB2), clamp01(0.55F * far));
    });
    return canvas;
}
