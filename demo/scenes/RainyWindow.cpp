// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"

// Drops on a window pane, the evening street a blur behind. Every drop holds it upside down.
Canvas Scenes::rainyWindow(const View &view)
{
    Canvas street(view.width, view.height);
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py));
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            const float block = Noise::fractal(x * 2.2F, y * 2, 2, view.seed);
            Rgb light =
                mix(srgb(0x232A3F), srgb(0x66708C), smoothStep(-0.2F, 0.55F, y + 0.25F * block));
            light = mix(light, srgb(0x15120F), 0.7F * smoothStep(-0.05F, -0.45F, y));
            street.at(px, py) = light;
        }
    }
    const Rgb lamps[] = {srgb(0xFFB35A), srgb(0xFF6A3A), srgb(0xFFE0B0),
                         srgb(0x6FC7FF), srgb(0xFF4A4A), srgb(0x8CFFB0)};
    for (uint32_t i = 0; i < 64; ++i) {
        const float x = 1.7F * (Noise::hash(i, view.seed, 1) - 0.5F);
        const float y = -0.16F + 0.42F * (Noise::hash(i, view.seed, 2) - 0.5F) *
                                     Noise::hash(i, view.seed, 3) * 2;
        const uint32_t kind = Noise::hash(i, view.seed, 4) < 0.62F ? i % 3 : i % 6;
        street.addDisc(view.pixelX(x), view.pixelY(y),
                       (0.03F + 0.028F * Noise::hash(i, view.seed, 5)) / view.unit(),
                       lamps[kind] * (0.18F + 0.75F * Noise::hash(i, view.seed, 6) *
                                                  Noise::hash(i, view.seed, 7)));
    }
    street.blur(0.004F / view.unit());
    Canvas small = street.scaled(view.width / 3, view.height / 3);
    Canvas canvas = street;
    const auto drop = [&](float cx, float cy, float radius, float stretch) {
        const int left = std::max(0, static_cast<int>(view.pixelX(cx - radius * 1.2F)));
        const int right =
            std::min(view.width - 1, static_cast<int>(view.pixelX(cx + radius * 1.2F)));
        const int top = std::max(0, static_cast<int>(view.pixelY(cy + radius * stretch * 1.2F)));
        const int bottom =
            std::min(view.height - 1, static_cast<int>(view.pixelY(cy - radius * stretch * 1.2F)));
        for (int py = top; py <= bottom; ++py) {
            const float dy = (view.sceneY(static_cast<float>(py)) - cy) / (radius * stretch);
            for (int px = left; px <= right; ++px) {
                const float dx = (view.sceneX(static_cast<float>(px)) - cx) / radius;
                const float wobble =
                    1 + 0.16F * Noise::gradient(dx * 1.2F + cx * 90, dy * 1.2F + cy * 90, 3);
                const float d = std::sqrt(dx * dx + dy * dy) * wobble;
                const float cover = clamp01((1 - d) * radius / view.unit() + 0.5F);
                if (cover <= 0) {
                    continue;
                }
                // A drop is a strong lens: it shows a wide, inverted view of what is behind.
                const float lens = 1 - 0.35F * d * d;
                const float sx = cx * 0.4F - dx * 0.62F * lens;
                const float sy = cy * 0.2F - dy * 0.42F * lens;
                Rgb light = small.sample(view.pixelX(sx) / 3, view.pixelY(sy) / 3) * 1.05F;
                light = light * (1 - 0.8F * smoothStep(0.62F, 1.0F, d));
                const float gx = dx + 0.32F;
                const float gy = dy - 0.42F;
                light += Rgb{0.9F, 0.95F, 1} * (1.3F * std::exp(-(gx * gx + gy * gy) * 38));
                light += srgb(0xC9D4EA) * (0.35F * smoothStep(0.55F, 0.9F, d) * clamp01(-dy));
                canvas.at(px, py) = mix(canvas.at(px, py), light, cover);
            }
        }
    };
    for (uint32_t i = 0; i < 1500; ++i) { // fine condensation
        drop(view.aspect() * (Noise::hash(i, view.seed, 21) - 0.5F),
             Noise::hash(i, view.seed, 22) - 0.5F,
             0.0016F + 0.0036F * Noise::hash(i, view.seed, 23), 1.05F);
    }
    for (uint32_t i = 0; i < 240; ++i) {
        const float large = std::pow(Noise::hash(i, view.seed, 33), 4.0F);
        drop(view.aspect() * (Noise::hash(i, view.seed, 31) - 0.5F),
             Noise::hash(i, view.seed, 32) - 0.5F, 0.006F + 0.028F * large, 1.1F + 0.35F * large);
    }
    for (uint32_t i = 0; i < 7; ++i) { // drops that have begun to run
        const float x = view.aspect() * (Noise::hash(i, view.seed, 41) - 0.5F);
        const float end = -0.35F + 0.6F * Noise::hash(i, view.seed, 42);
        for (int k = 0; k < 26; ++k) {
            const float y = end + 0.022F * static_cast<float>(k) *
                                      (1 + 0.4F * Noise::hash(i, static_cast<uint32_t>(k), 43));
            drop(x + 0.012F * Noise::gradient(y * 7, static_cast<float>(i), 5), y,
                 k == 0 ? 0.021F
                        : 0.0075F * (1 - 0.025F * static_cast<float>(k)) *
                              (0.5F + Noise::hash(i, static_cast<uint32_t>(k), 44)),
                 k == 0 ? 1.4F : 1.5F);
        }
    }
    return canvas;
}
