// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/painting/Development.h"

#include "demo/painting/Noise.h"

#include <array>
#include <vector>

constexpr int curveSteps = 4096;
constexpr int grainSide = 512;

// A film-like curve: straight in the middle, a soft shoulder for the highlights, a short toe.
static float filmCurve(float light, float contrast)
{
    const float toned = 0.18F * std::pow(light / 0.18F, contrast);
    const float bright =
        (toned * (2.51F * toned + 0.03F)) / (toned * (2.43F * toned + 0.59F) + 0.14F);
    const float v = clamp01(bright);
    return v <= 0.0031308F ? 12.92F * v : 1.055F * std::pow(v, 1 / 2.4F) - 0.055F;
}

// Light has no upper end: the table is indexed by light / (1 + light).
static std::vector<float> curveTable(float exposure, float contrast)
{
    std::vector<float> table(curveSteps + 2);
    for (int i = 0; i <= curveSteps + 1; ++i) {
        const float u = std::min(static_cast<float>(i) / curveSteps, 0.9997F);
        table[static_cast<size_t>(i)] = 255 * filmCurve(exposure * u / (1 - u), contrast);
    }
    return table;
}

// One tile of grain, slightly soft as real grain is; reused with shifts that hide the tiling.
static const std::vector<float> &grainTile()
{
    static const auto tile = [] {
        std::vector<float> raw(static_cast<size_t>(grainSide) * grainSide);
        for (size_t i = 0; i < raw.size(); ++i) {
            const auto n = static_cast<uint32_t>(i);
            raw[i] = Noise::hash(n, 1) + Noise::hash(n, 2) + Noise::hash(n, 3) - 1.5F;
        }
        std::vector<float> soft(raw.size());
        const auto get = [&](int x, int y) {
            return raw[static_cast<size_t>(y & (grainSide - 1)) * grainSide +
                       (x & (grainSide - 1))];
        };
        for (int y = 0; y < grainSide; ++y) {
            for (int x = 0; x < grainSide; ++x) {
                soft[static_cast<size_t>(y) * grainSide + x] =
                    1.1F * get(x, y) +
                    0.45F * (get(x - 1, y) + get(x + 1, y) + get(x, y - 1) + get(x, y + 1));
            }
        }
        return soft;
    }();
    return tile;
}

static void addBloom(Canvas &light, float strength)
{
    Canvas small = light.scaled(light.width() / 6, light.height() / 6);
    for (int y = 0; y < small.height(); ++y) {
        for (int x = 0; x < small.width(); ++x) {
            Rgb &p = small.at(x, y);
            p = {std::min(p.r, 12.0F), std::min(p.g, 12.0F), std::min(p.b, 12.0F)};
        }
    }
    Canvas wide = small;
    small.blur(static_cast<float>(small.width()) / 110);
    wide.blur(static_cast<float>(wide.width()) / 22);
    for (int y = 0; y < small.height(); ++y) {
        for (int x = 0; x < small.width(); ++x) {
            small.at(x, y) = small.at(x, y) * 0.6F + wide.at(x, y) * 0.4F;
        }
    }
    const float sx = static_cast<float>(small.width()) / static_cast<float>(light.width());
    const float sy = static_cast<float>(small.height()) / static_cast<float>(light.height());
    for (int y = 0; y < light.height(); ++y) {
        Rgb *row = light.row(y);
        const float fy = (static_cast<float>(y) + 0.5F) * sy - 0.5F;
        for (int x = 0; x < light.width(); ++x) {
            const float fx = (static_cast<float>(x) + 0.5F) * sx - 0.5F;
            row[x] = row[x] * (1 - strength) + small.sample(fx, fy) * strength;
        }
    }
}

QImage Development::develop(Canvas light, int longEdge, uint32_t seed) const
{
    const int longSide = std::max(light.width(), light.height());
    if (softness > 0) {
        light.blur(softness * 0.001F * static_cast<float>(longSide) / 2);
    }
    if (shake > 0) {
        light.blurAcross(shake * 0.001F * static_cast<float>(longSide) / 2);
        light.blurDown(shake * 0.0004F * static_cast<float>(longSide) / 2);
    }
    if (bloom > 0) {
        addBloom(light, bloom);
    }

    // The film curve at the size painted: rows of finished tones, 0 to 255.
    const auto table = curveTable(exposure, contrast);
    const auto onCurve = [&table](float v) {
        v = std::max(v, 0.0F);
        const float place = v / (1 + v) * curveSteps;
        const auto step = static_cast<size_t>(place);
        return mix(table[step], table[step + 1], place - static_cast<float>(step));
    };
    const Rgb balance{1 + 0.16F * warmth, 1, 1 - 0.2F * warmth};
    for (int y = 0; y < light.height(); ++y) {
        Rgb *row = light.row(y);
        const float vy =
            2 * (static_cast<float>(y) + 0.5F) / static_cast<float>(light.height()) - 1;
        for (int x = 0; x < light.width(); ++x) {
            const float vx =
                2 * (static_cast<float>(x) + 0.5F) / static_cast<float>(light.width()) - 1;
            const float corner = (vx * vx + vy * vy) * 0.5F;
            Rgb c = row[x] * balance * (1 - vignette * corner * corner);
            const float grey = c.luminance();
            c = monochrome ? Rgb{grey, grey, grey} : mix({grey, grey, grey}, c, saturation);
            row[x] = {onCurve(c.r), onCurve(c.g), onCurve(c.b)};
        }
    }

    const float scale = static_cast<float>(longEdge) / static_cast<float>(longSide);
    const int width = static_cast<int>(std::lround(static_cast<float>(light.width()) * scale));
    const int height = static_cast<int>(std::lround(static_cast<float>(light.height()) * scale));
    QImage picture(width, height, QImage::Format_RGB32);
    const auto &noise = grainTile();
    std::vector<Rgb> between(static_cast<size_t>(light.width()) + 1);
    std::vector<std::pair<int, float>> places(static_cast<size_t>(width));
    for (int x = 0; x < width; ++x) {
        const float sx = std::clamp((static_cast<float>(x) + 0.5F) / scale - 0.5F, 0.0F,
                                    static_cast<float>(light.width() - 1));
        const int left = static_cast<int>(sx);
        places[static_cast<size_t>(x)] = {left, sx - static_cast<float>(left)};
    }
    for (int y = 0; y < height; ++y) {
        const float sy = std::clamp((static_cast<float>(y) + 0.5F) / scale - 0.5F, 0.0F,
                                    static_cast<float>(light.height() - 1));
        const int upper = static_cast<int>(sy);
        const Rgb *above = light.row(upper);
        const Rgb *below = light.row(std::min(upper + 1, light.height() - 1));
        for (int x = 0; x < light.width(); ++x) {
            between[static_cast<size_t>(x)] =
                mix(above[x], below[x], sy - static_cast<float>(upper));
        }
        between.back() = between[between.size() - 2];

        auto *line = reinterpret_cast<QRgb *>(picture.scanLine(y));
        const auto row = static_cast<uint32_t>(y);
        const float *grainRow =
            noise.data() + static_cast<size_t>((row + seed * 131) & (grainSide - 1)) * grainSide;
        const uint32_t rowShift = seed * 71 + row / grainSide * 89;
        for (int x = 0; x < width; ++x) {
            const auto &[left, part] = places[static_cast<size_t>(x)];
            const Rgb c = mix(between[static_cast<size_t>(left)],
                              between[static_cast<size_t>(left) + 1], part);
            const auto column = static_cast<uint32_t>(x);
            const uint32_t shift = rowShift + column / grainSide * 197;
            const float speck = grainRow[(column + shift) & (grainSide - 1)];
            // Grain shows in the middle tones and drowns in black and white.
            const float tone = (c.r + c.g + c.g + c.b) * (1.0F / 1020);
            const float n = 0.5F + speck * 7.5F * grain * (0.25F + 2.6F * tone * (1 - tone));
            const auto byte = [n](float v) {
                return static_cast<int>(std::min(std::max(v + n, 0.0F), 255.0F));
            };
            line[x] = qRgb(byte(c.r), byte(c.g), byte(c.b));
        }
    }
    return picture;
}
