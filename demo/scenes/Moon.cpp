// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"

// The moon, two days before it is full, through a long lens.
Canvas Scenes::moon(const View &view)
{
    Canvas canvas(view.width, view.height);
    const float radius = 0.33F;
    const float cx = -0.05F;
    const float cy = 0.01F;
    const auto height = [&](float x, float y) {
        float sum = 0.5F * Noise::fractal(x * 9, y * 9, 5, view.seed);
        for (uint32_t ring = 0; ring < 3; ++ring) {
            const float scale = ring == 0 ? 4.0F : ring == 1 ? 9.0F : 20.0F;
            const float gx = std::floor(x * scale);
            const float gy = std::floor(y * scale);
            for (int j = -1; j <= 1; ++j) {
                for (int i = -1; i <= 1; ++i) {
                    const auto ix = static_cast<uint32_t>(static_cast<int>(gx) + i + 500);
                    const auto iy = static_cast<uint32_t>(static_cast<int>(gy) + j + 500);
                    const float size = 0.05F + 0.4F * std::pow(Noise::hash(ix, iy, ring + 7), 3.0F);
                    const float dx =
                        x * scale - gx - static_cast<float>(i) - Noise::hash(ix, iy, ring + 1);
                    const float dy =
                        y * scale - gy - static_cast<float>(j) - Noise::hash(ix, iy, ring + 4);
                    const float d = std::sqrt(dx * dx + dy * dy) / size;
                    sum += (4.0F / scale) * size * 1.3F *
                           (0.9F * std::exp(-(d - 1) * (d - 1) * 22) -
                            0.8F * smoothStep(1.0F, 0.55F, d));
                }
            }
        }
        return sum;
    };
    for (int py = 0; py < view.height; ++py) {
        const float y = (view.sceneY(static_cast<float>(py)) - cy) / radius;
        for (int px = 0; px < view.width; ++px) {
            const float x = (view.sceneX(static_cast<float>(px)) - cx) / radius;
            const float d2 = x * x + y * y;
            Rgb light = srgb(0x05070C) +
                        srgb(0x3A4660) * (0.10F * std::exp(-std::max(d2 - 1, 0.0F) * 1.8F));
            if (d2 < 1.02F) {
                const float z = std::sqrt(std::max(1 - d2, 0.0F));
                const float u = x / (0.6F + 0.4F * z);
                const float v = y / (0.6F + 0.4F * z);
                const float e = 0.006F;
                const float h = height(u, v);
                const float hx = (height(u + e, v) - h) / e;
                const float hy = (height(u, v + e) - h) / e;
                const float sun = clamp01(0.80F * z + 0.58F * x + 0.12F * y - 0.055F * hx * 0.8F -
                                          0.055F * hy * 0.3F);
                const float maria = smoothStep(
                    -0.12F, 0.16F,
                    Noise::fractal(u * 1.5F + 4, v * 1.5F, 4, view.seed + 9) + 0.12F - 0.12F * u);
                const Rgb ground = mix(srgb(0xD9D3C8), srgb(0x8A8880), 0.95F * maria) *
                                   (0.9F + 0.3F * Noise::fractal(u * 40, v * 40, 3, 4));
                light = mix(light, ground * (std::pow(sun, 0.8F) * 0.95F),
                            clamp01((1 - std::sqrt(d2)) * radius / view.unit() + 0.5F));
            }
            canvas.at(px, py) = light;
        }
    }
    return canvas;
}
