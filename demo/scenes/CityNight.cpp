// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Scenes.h"

#include "demo/painting/Noise.h"

// A city across the water at night. moment: 0 in focus, 1 thrown out of focus to discs of light.
Canvas Scenes::cityNight(const View &view)
{
    Canvas canvas(view.width, view.height);
    const float shore = -0.12F;
    const bool discs = view.moment > 0.5F;
    for (int py = 0; py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py)) - shore;
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            const float cloud = Noise::fractal(x * 1.6F, y * 4, 4, view.seed);
            const float up = std::fabs(y);
            Rgb light = mix(srgb(0xA8604A) * 0.5F, srgb(0x121C3A),
                            smoothStep(0.0F, 0.42F, up - 0.06F * cloud));
            light += srgb(0xD08A50) * (0.16F * std::exp(-up * 9) * (1 + cloud));
            canvas.at(px, py) = light * (y < 0 ? 0.5F : 0.75F);
        }
    }
    struct Lamp {
        float x, y;
        Rgb light;
    };
    std::vector<Lamp> lamps;
    const Rgb warm[] = {srgb(0xFFC27A), srgb(0xFFD9A8), srgb(0xFFE9CF), srgb(0xCFE2FF),
                        srgb(0xFFB057)};
    for (int row = 0; row < 3; ++row) {
        const float near = static_cast<float>(row) / 2;
        const int houses = 30 - row * 6;
        for (int i = 0; i < houses; ++i) {
            const auto id = static_cast<uint32_t>(i + row * 100);
            const float centre = 1.9F * ((static_cast<float>(i) + Noise::hash(id, view.seed)) /
                                             static_cast<float>(houses) -
                                         0.5F);
            const float peak = std::exp(-5 * (centre + 0.22F) * (centre + 0.22F)) +
                               0.6F * std::exp(-14 * (centre - 0.42F) * (centre - 0.42F));
            const float tall =
                mix(0.14F, 0.05F, near) * (0.4F + 0.8F * Noise::hash(id, view.seed, 2)) +
                mix(0.27F, 0.05F, near) * peak * Noise::hash(id, view.seed, 3);
            const float half =
                mix(0.018F, 0.035F, near) * (0.6F + 0.8F * Noise::hash(id, view.seed, 4));
            const int left = std::max(0, static_cast<int>(view.pixelX(centre - half)));
            const int right =
                std::min(view.width - 1, static_cast<int>(view.pixelX(centre + half)));
            const int top = std::max(0, static_cast<int>(view.pixelY(shore + tall)));
            const int bottom = std::min(view.height - 1, static_cast<int>(view.pixelY(shore)));
            const float stories = 0.0085F + 0.004F * Noise::hash(id, view.seed, 5);
            const float bays = 0.0055F + 0.004F * Noise::hash(id, view.seed, 6);
            const float busy = 0.62F + 0.25F * Noise::hash(id, view.seed, 7);
            const Rgb wall = mix(srgb(0x171B2C), srgb(0x30272E), Noise::hash(id, view.seed, 8)) *
                             mix(1.1F, 0.55F, near);
            for (int py = top; py <= bottom; ++py) {
                const float y = view.sceneY(static_cast<float>(py)) - shore;
                const auto story = static_cast<uint32_t>(static_cast<int>(y / stories));
                const float fy = y / stories - std::floor(y / stories);
                for (int px = left; px <= right; ++px) {
                    const float x = view.sceneX(static_cast<float>(px)) - centre + half;
                    const auto bay = static_cast<uint32_t>(static_cast<int>(x / bays));
                    const float fx = x / bays - std::floor(x / bays);
                    Rgb light = wall * (0.8F + 0.5F * std::exp(-y * 30));
                    const float lit = Noise::hash(story * 64 + bay, id, view.seed);
                    const float office = Noise::hash(story, id, view.seed + 3);
                    if (fx > 0.22F && fx < 0.82F && fy > 0.25F && fy < 0.78F &&
                        (lit > busy || office > 0.93F)) {
                        light = warm[static_cast<uint32_t>(lit * 977) % 5] *
                                (0.5F + 1.6F * Noise::hash(bay, story, id));
                    }
                    canvas.at(px, py) = light;
                }
            }
            if (tall > 0.26F) {
                lamps.push_back({centre, shore + tall + 0.012F, {7, 0.5F, 0.35F}});
            }
        }
    }
    for (uint32_t i = 0; i < 46; ++i) {
        const float x =
            -0.9F + 1.8F * (static_cast<float>(i) + 0.4F * Noise::hash(i, view.seed, 31)) / 46;
        const Rgb colour = i % 11 == 5 ? srgb(0x58E0A0) : i % 7 == 3 ? srgb(0xFF5A40) : warm[i % 5];
        lamps.push_back({x, shore + 0.006F + 0.012F * Noise::hash(i, view.seed, 32),
                         colour * (4 + 7 * Noise::hash(i, view.seed, 33))});
    }
    for (const auto &lamp : lamps) {
        canvas.addGlow(view.pixelX(lamp.x), view.pixelY(lamp.y), 0.035F / view.unit(),
                       lamp.light * 0.22F);
        canvas.addDisc(view.pixelX(lamp.x), view.pixelY(lamp.y),
                       std::max(0.0021F / view.unit(), 1.2F), lamp.light);
    }
    // The water: the city upside down, drawn out by the waves.
    Canvas above = canvas;
    above.blurDown(0.012F / view.unit());
    const int line = static_cast<int>(view.pixelY(shore));
    for (int py = std::max(line, 0); py < view.height; ++py) {
        const float y = view.sceneY(static_cast<float>(py)) - shore;
        const float near = 0.03F - y;
        for (int px = 0; px < view.width; ++px) {
            const float x = view.sceneX(static_cast<float>(px));
            const float wave =
                Noise::fractal(x * 2.5F / near * 0.4F, 0.55F / near + view.panX, 4, view.seed + 60);
            const float other =
                Noise::fractal(x * 4 / near * 0.4F + 40, 1.1F / near, 3, view.seed + 61);
            const float sx = view.pixelX(x + 0.010F * other * (1 + 8 * near));
            const float sy =
                view.pixelY(shore + std::max(-y * 0.85F + wave * (0.01F + 0.16F * near), 0.001F));
            canvas.at(px, py) =
                above.sample(sx, sy) * (0.62F * (0.75F + 0.5F * other)) + srgb(0x0A1226) * 0.5F;
        }
    }
    if (discs) {
        canvas.blur(0.02F / view.unit());
        for (const auto &lamp : lamps) {
            const float radius = 0.030F / view.unit();
            canvas.addDisc(view.pixelX(lamp.x * 1.25F), view.pixelY(lamp.y), radius,
                           lamp.light * 0.05F);
            canvas.addDisc(
                view.pixelX(lamp.x * 1.25F),
                view.pixelY(2 * shore - lamp.y -
                            0.12F * Noise::hash(static_cast<uint32_t>(lamp.x * 999 + 5000))),
                radius, lamp.light * 0.018F);
        }
        for (uint32_t i = 0; i < 150; ++i) {
            const float x = -0.25F + 0.5F * (Noise::hash(i, 5) + Noise::hash(i, 6) - 1) * 2;
            const float y = shore + 0.02F + 0.33F * Noise::hash(i, 7) * Noise::hash(i, 8);
            canvas.addDisc(view.pixelX(x), view.pixelY(y), 0.030F / view.unit(),
                           warm[i % 5] * (0.04F + 0.12F * Noise::hash(i, 9)));
        }
    }
    return canvas;
}
