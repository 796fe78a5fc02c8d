// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"

// Tall trees in morning fog, the sun behind them: shafts of light between the trunks.
Canvas Scenes::forest(const View &view)
{
    Canvas canvas(view.width, view.height);
    const float sunX = 0.22F;
    const float sunY = 0.24F;
    const Rgb fog = mix(srgb(0x9DB083), srgb(0xF1D08A), 0.55F);
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py));
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            const float d2 = (x - sunX) * (x - sunX) + (y - sunY) * (y - sunY);
            const float leaves = 0.5F + 0.6F * Noise::fractal(x * 9, y * 9, 4, view.seed);
            const float crown = smoothStep(-0.05F, 0.4F, y);
            Rgb light = fog * (0.34F + 1.5F * std::exp(-6 * d2) + 5 * std::exp(-140 * d2));
            light = mix(light, srgb(0x7C9440) * (0.35F + 1.1F * std::exp(-4 * d2)),
                        crown * smoothStep(0.35F, 0.75F, leaves) * 0.7F);
            canvas.at(px, py) = light;
        }
    }
    constexpr int layers = 6;
    for (int layer = 0; layer < layers; ++layer) {
        const float near = static_cast<float>(layer) / (layers - 1);
        const float floor = mix(-0.12F, -0.47F, near * near);
        const float depth = std::pow(near, 1.3F);
        const auto seed = view.seed * 31 + static_cast<uint32_t>(layer) * 17;
        // Ground first, then the trunks that stand on it, then their leaves.
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            const float edge = floor + (0.03F + 0.03F * near) * Noise::fractal(x * 3, 1, 3, seed) +
                               0.015F * near * std::fabs(Noise::fractal(x * 40, 2, 3, seed));
            const int top = std::clamp(static_cast<int>(view.pixelY(edge)), 0, view.height);
            for (int py = top; py < view.height; ++py) {
                const float y = view.sceneY(static_cast<float>(py));
                const float ferns =
                    0.5F + 0.7F * Noise::fractal(x * mix(30, 13, near), y * mix(60, 26, near), 4,
                                                 seed + 5);
                const float sunny = std::exp(-7 * (x - sunX) * (x - sunX)) * (1 - 0.6F * near);
                const Rgb moss = mix(srgb(0x10180A), srgb(0x57702A), clamp01(ferns * ferns)) *
                                 (0.4F + 1.6F * sunny);
                canvas.at(px, py) =
                    mix(canvas.at(px, py),
                        mix(fog * (0.3F + 0.8F * sunny), moss, 0.25F + 0.75F * depth), 0.93F);
            }
        }
        const int trunks = layer < layers - 1 ? 15 - layer * 2 : 3;
        for (int i = 0; i < trunks; ++i) {
            const auto id = static_cast<uint32_t>(i);
            const float spread = view.aspect() > 1 ? 1.9F : 1.3F;
            const float x0 =
                spread * ((static_cast<float>(i) + 0.15F + 0.8F * Noise::hash(id, seed)) /
                              static_cast<float>(trunks) -
                          0.5F) +
                near * 0.25F * view.panX;
            const float width =
                mix(0.006F, 0.05F, depth) * (0.6F + 0.7F * Noise::hash(id, seed, 2));
            const float lean = 0.05F * (Noise::hash(id, seed, 3) - 0.5F);
            if (layer == layers - 1 && std::fabs(x0 - 0.1F) < 0.28F) {
                continue;
            }
            for (int py = 0; py < view.height; ++py) {
                const float y = view.sceneY(static_cast<float>(py));
                if (y < floor - 0.01F) {
                    break;
                }
                const float middle = x0 + lean * y + 0.006F * Noise::gradient(y * 3, x0 * 9, seed);
                const float flare = width * (1 + 0.9F * std::exp(-(y - floor) * 22));
                const int left = std::max(0, static_cast<int>(view.pixelX(middle - flare)));
                const int right =
                    std::min(view.width - 1, static_cast<int>(view.pixelX(middle + flare)) + 1);
                for (int px = left; px <= right; ++px) {
                    const float x = view.sceneX(static_cast<float>(px));
                    const float across = (x - middle) / flare;
                    const float cover =
                        clamp01((1 - std::fabs(across)) * flare / view.unit() + 0.5F);
                    const float bark = Noise::fractal(x * 90, y * 14, 4, seed + 40);
                    const float rim = smoothStep(0.55F, 1.0F, x0 < sunX ? across : -across);
                    const float sunny =
                        std::exp(-5 * ((x - sunX) * (x - sunX) + (y - sunY) * (y - sunY)));
                    const Rgb wood = srgb(0x221B14) * (0.7F + 1.1F * clamp01(bark + 0.35F)) +
                                     fog * (rim * (0.1F + 0.6F * sunny) * 0.7F);
                    canvas.at(px, py) = mix(
                        canvas.at(px, py),
                        mix(fog * (0.3F + 1.2F * sunny), wood, 0.2F + 0.79F * std::pow(near, 0.8F)),
                        cover);
                }
            }
        }
        if (layer < layers - 1) {
            for (uint32_t i = 0; i < 190; ++i) {
                const float x = (Noise::hash(i, seed, 21) - 0.5F) * 1.8F;
                const float y = 0.56F - 0.55F * std::pow(Noise::hash(i, seed, 22), 1.5F);
                const float d2 = (x - sunX) * (x - sunX) + (y - sunY) * (y - sunY);
                const float radius = mix(0.004F, 0.017F, near) *
                                     (0.6F + 0.8F * Noise::hash(i, seed, 23)) / view.unit();
                const Rgb leaf = mix(srgb(0x4A661E), srgb(0xD9C24A), Noise::hash(i, seed, 24)) *
                                 (0.12F + 0.9F * std::exp(-6 * d2));
                canvas.addDisc(view.pixelX(x), view.pixelY(y), radius,
                               leaf * mix(0.5F, 0.35F, near), 0.1F);
            }
        }
    }
    // Shafts: the light of the bright gaps, smeared away from the sun.
    Canvas shafts = canvas.scaled(view.width / 4, view.height / 4);
    const float cx = view.pixelX(sunX) / 4;
    const float cy = view.pixelY(sunY) / 4;
    Canvas rays(shafts.width(), shafts.height());
    for (int y = 0; y < rays.height(); ++y) {
        for (int x = 0; x < rays.width(); ++x) {
            Rgb sum{};
            float weight = 1;
            for (int i = 0; i < 40; ++i) {
                const float k = 1 - 0.021F * static_cast<float>(i);
                const Rgb s = shafts.sample(cx + (static_cast<float>(x) - cx) * k,
                                            cy + (static_cast<float>(y) - cy) * k);
                sum += s * (weight * smoothStep(0.45F, 1.4F, s.luminance()));
                weight *= 0.965F;
            }
            rays.at(x, y) = sum * (1.0F / 34);
        }
    }
    for (int y = 0; y < view.height; ++y) {
        for (int x = 0; x < view.width; ++x) {
            canvas.at(x, y) +=
                rays.sample(static_cast<float>(x) / 4, static_cast<float>(y) / 4) * 0.75F;
        }
    }
    return canvas;
}
