// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"

// One flower in a meadow at a wide aperture. moment: 0 a daisy, 1 a gerbera, 2 a sunflower.
Canvas Scenes::flower(const View &view)
{
    const int kind = static_cast<int>(view.moment);
    Canvas canvas(view.width, view.height);
    const Rgb meadow = kind == 2 ? srgb(0x7C8A2C) : kind == 1 ? srgb(0x39562F) : srgb(0x4E7A34);
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py));
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            const float patch = Noise::fractal(x * 2 + 3, y * 2, 2, view.seed);
            const float other = Noise::fractal(x * 3, y * 3 + 8, 2, view.seed + 4);
            Rgb light = meadow * (0.55F + 0.5F * patch + 0.7F * smoothStep(-0.6F, 0.6F, y));
            light = mix(light, srgb(0x12241A), 0.7F * smoothStep(0.05F, 0.5F, other - 0.5F * y));
            canvas.at(px, py) = mix(light, kind == 2 ? srgb(0xE6D9A0) : srgb(0xB8C98A),
                                    0.55F * smoothStep(0.0F, 0.7F, y + 0.35F * patch));
        }
    }
    const Rgb lamps[] = {srgb(0xFFF3C0), srgb(0xDDEB9A), srgb(0xFFE08A), srgb(0xE9F7D0),
                         kind == 1 ? srgb(0xFF9A8A) : srgb(0xFFFFFF)};
    for (uint32_t i = 0; i < 70; ++i) {
        const float x = 1.7F * (Noise::hash(i, view.seed, 1) - 0.5F) - 0.6F * view.panX;
        const float y = 1.1F * (Noise::hash(i, view.seed, 2) - 0.4F);
        const float radius = (0.02F + 0.05F * Noise::hash(i, view.seed, 3)) / view.unit();
        canvas.addDisc(view.pixelX(x), view.pixelY(y), radius,
                       lamps[i % 5] * (0.05F + 0.17F * Noise::hash(i, view.seed, 4) *
                                                   Noise::hash(i, view.seed, 5)));
    }
    for (uint32_t i = 0; i < 7; ++i) { // others of its kind, far behind
        const float x = 1.6F * (Noise::hash(i, view.seed, 11) - 0.5F) - 0.5F * view.panX;
        const float y = 0.8F * (Noise::hash(i, view.seed, 12) - 0.55F);
        const Rgb petal = kind == 0   ? srgb(0xF4F2E8) * 0.45F
                          : kind == 1 ? srgb(0xC8352C) * 0.6F
                                      : srgb(0xF0B21A) * 0.6F;
        canvas.addGlow(view.pixelX(x), view.pixelY(y), 0.19F / view.unit(), petal * 1.4F);
    }
    canvas.blur(0.012F / view.unit());

    const float cx = kind == 0 ? -0.13F : 0.10F;
    const float cy = 0.07F;
    const float size = kind == 0 ? 0.33F : 0.38F;
    const float squash = kind == 0 ? 0.62F : 0.86F; // seen from the side
    const float tilt = kind == 0 ? -0.35F : 0.2F;
    const float cosTilt = std::cos(tilt);
    const float sinTilt = std::sin(tilt);
    // The stem bends away below and goes out of focus.
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py));
        if (y > cy) {
            continue;
        }
        const float bend = cx + 0.22F * (cy - y) * (cy - y) + 0.03F * std::sin(6 * y);
        const float width = 0.016F + 0.008F * (cy - y);
        const float soft = 0.004F + 0.05F * (cy - y) * (cy - y);
        for (int px = 0; px < view.width; ++px) {
            const float away = (view.sceneX(static_cast<float>(px)) - bend) / width;
            const float cover = 1 - smoothStep(1 - soft / width, 1 + soft / width, std::fabs(away));
            if (cover > 0) {
                const Rgb stem = mix(srgb(0x2C4518), srgb(0x9DB04F), clamp01(0.45F - 0.5F * away));
                canvas.at(px, py) = mix(canvas.at(px, py), stem, cover);
            }
        }
    }
    struct Ring {
        int petals;
        float length, width, turn;
    };
    const std::vector<Ring> rings =
        kind == 0   ? std::vector<Ring>{{19, 1.0F, 0.155F, 0.1F}, {17, 0.95F, 0.15F, 0.27F}}
        : kind == 1 ? std::vector<Ring>{{26, 1.0F, 0.135F, 0.0F},
                                        {24, 0.86F, 0.13F, 0.13F},
                                        {22, 0.68F, 0.11F, 0.05F},
                                        {26, 0.47F, 0.06F, 0.1F}}
                    : std::vector<Ring>{{22, 1.0F, 0.16F, 0.0F},
                                        {21, 0.93F, 0.15F, 0.16F},
                                        {17, 0.82F, 0.13F, 0.05F}};
    const Rgb outer = kind == 0 ? srgb(0xF6F4F0) : kind == 1 ? srgb(0xD8281E) : srgb(0xF7B200);
    const Rgb inner = kind == 0 ? srgb(0xE9E6DA) : kind == 1 ? srgb(0x8C0F16) : srgb(0xC86A00);
    const float discRadius = kind == 0 ? 0.27F : kind == 1 ? 0.24F : 0.44F;
    for (int py = 0; py < view.height; ++py) {
        const float sy = view.sceneY(static_cast<float>(py)) - cy;
        for (int px = 0; px < view.width; ++px) {
            const float sx = view.sceneX(static_cast<float>(px)) - cx;
            if (sx * sx + sy * sy > 1.5F * size * size) {
                continue;
            }
            const float rx = (sx * cosTilt + sy * sinTilt) / size;
            const float ry = (sy * cosTilt - sx * sinTilt) / (size * squash);
            const float radius = std::sqrt(rx * rx + ry * ry);
            const float angle = std::atan2(ry, rx);
            // Focus lies on the near side; the far petals soften.
            const float blur =
                (0.006F + 0.03F * clamp01(0.4F + 0.8F * ry)) * (kind == 0 ? 1.0F : 0.5F);
            Rgb colour = canvas.at(px, py);
            float shadow = 0;
            for (size_t r = 0; r < rings.size(); ++r) {
                const auto &ring = rings[r];
                const float sector = 6.2831853F / static_cast<float>(ring.petals);
                Rgb best{};
                float bestCover = 0;
                for (int side = -1; side <= 1; ++side) {
                    const float cell =
                        std::floor((angle - ring.turn) / sector + 0.5F) + static_cast<float>(side);
                    const auto id =
                        static_cast<uint32_t>(
                            static_cast<int>(cell + static_cast<float>(ring.petals) * 2) %
                            ring.petals) +
                        100 * static_cast<uint32_t>(r);
                    const float crook = 0.10F * (Noise::hash(id, view.seed, 31) - 0.5F);
                    const float axis = cell * sector + ring.turn + crook;
                    const float along = rx * std::cos(axis) + ry * std::sin(axis);
                    float across = -rx * std::sin(axis) + ry * std::cos(axis);
                    const float length =
                        ring.length * (0.88F + 0.16F * Noise::hash(id, view.seed, 32));
                    if (along <= 0 || along > length * 1.02F) {
                        continue;
                    }
                    const float t = along / length;
                    across += 0.05F * (Noise::hash(id, view.seed, 33) - 0.5F) * t * t;
                    const float pointed = kind == 2 ? 0.9F : 0.55F;
                    const float half =
                        ring.width *
                        std::pow(
                            std::sin(3.1F * std::pow(t, kind == 2 ? 0.8F : 1.25F) * 0.97F + 0.05F),
                            pointed) *
                        (0.9F + 0.2F * Noise::hash(id, view.seed, 34));
                    const float cover = smoothStep(-blur, blur, half - std::fabs(across)) *
                                        smoothStep(-blur, blur, length - along);
                    const float height =
                        Noise::hash(id, view.seed, 35) + 0.001F * static_cast<float>(side);
                    if (cover > 0.02F && (cover > bestCover || height > 0.6F)) {
                        const float veins = Noise::fractal(
                            across * 60, along * 2.4F + static_cast<float>(id), 3, 5);
                        const float groove = std::cos(across / std::max(half, 0.01F) * 4.6F);
                        const float curl = 0.72F + 0.30F * smoothStep(0.1F, 0.7F, t) +
                                           0.16F * std::sin(axis - 0.9F);
                        best = mix(inner, outer, smoothStep(0.15F, 0.65F, t)) *
                               (curl * (0.9F + 0.08F * groove + 0.14F * veins) *
                                (0.78F + 0.3F * Noise::hash(id, view.seed, 36)));
                        best =
                            best * (1 - 0.45F *
                                            smoothStep(0.55F, 1.0F,
                                                       std::fabs(across) / std::max(half, 0.01F)) *
                                            0.6F);
                        bestCover = std::max(bestCover, cover);
                    }
                }
                shadow = r + 1 < rings.size()
                             ? 0.14F * smoothStep(rings[r + 1].length + 0.08F,
                                                  rings[r + 1].length - 0.1F, radius)
                             : 0;
                colour = mix(colour, best * (1 - shadow), bestCover);
            }
            const float disc = smoothStep(discRadius + blur, discRadius - blur, radius);
            if (disc > 0) {
                // Florets on the golden spiral: the nearest of a few candidates.
                const float scaled = radius / discRadius;
                float nearest = 1;
                const int guess = static_cast<int>(scaled * scaled * 420);
                for (int i = std::max(0, guess - 40); i < guess + 40; ++i) {
                    const float fr = std::sqrt(static_cast<float>(i) / 420);
                    const float fa = 2.3999632F * static_cast<float>(i);
                    const float dx = scaled * std::cos(angle) - fr * std::cos(fa);
                    const float dy = scaled * std::sin(angle) - fr * std::sin(fa);
                    nearest = std::min(nearest, dx * dx + dy * dy);
                }
                const float bead = clamp01(1 - std::sqrt(nearest) * 19);
                const Rgb low = kind == 0   ? srgb(0x8A5A08)
                                : kind == 1 ? srgb(0x22080A)
                                            : srgb(0x1E0F06);
                const Rgb high = kind == 0   ? srgb(0xFFD83A)
                                 : kind == 1 ? srgb(0xC05038)
                                             : mix(srgb(0x6A3A10), srgb(0xB87A1E), scaled);
                const float dome = 0.55F + 0.55F * clamp01(0.6F + ry / discRadius * 0.6F -
                                                           0.25F * rx / discRadius);
                colour = mix(colour, mix(low, high, bead) * dome, disc);
                colour = colour * (1 - 0.35F * smoothStep(0.25F, 0.0F, std::fabs(scaled - 1.02F)) *
                                           (1 - bead));
            }
            canvas.at(px, py) = colour;
        }
    }
    return canvas;
}
