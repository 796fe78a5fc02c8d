// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/painting/Noise.h"

#include <array>
#include <cmath>

namespace Noise {

static uint32_t scramble(uint32_t v)
{
    v ^= v >> 16U;
    v *= 0x7FEB352DU;
    v ^= v >> 15U;
    v *= 0x846CA68BU;
    v ^= v >> 16U;
    return v;
}

float hash(uint32_t a, uint32_t b, uint32_t c)
{
    const uint32_t mixed = scramble(a + 0x9E3779B9U * scramble(b + 0x85EBCA6BU * scramble(c + 1)));
    return static_cast<float>(mixed >> 8U) * 0x1p-24F;
}

struct Direction {
    float x;
    float y;
};

static const std::array<Direction, 256> &directions()
{
    static const auto table = [] {
        std::array<Direction, 256> result{};
        for (size_t i = 0; i < result.size(); ++i) {
            const float angle = 6.2831853F * static_cast<float>(i) / 256.0F;
            result[i] = {std::cos(angle), std::sin(angle)};
        }
        return result;
    }();
    return table;
}

float gradient(float x, float y, uint32_t seed)
{
    const auto &table = directions();
    // Rounding down by hand: std::floor is a call where the processor's own is not assumed.
    int32_t cellX = static_cast<int32_t>(x);
    int32_t cellY = static_cast<int32_t>(y);
    cellX -= x < static_cast<float>(cellX);
    cellY -= y < static_cast<float>(cellY);
    const auto ix = static_cast<uint32_t>(cellX);
    const auto iy = static_cast<uint32_t>(cellY);
    const float fx = x - static_cast<float>(cellX);
    const float fy = y - static_cast<float>(cellY);
    const auto corner = [&](uint32_t cx, uint32_t cy, float dx, float dy) {
        uint32_t h = cx * 0x8DA6B343U + cy * 0xD8163841U + seed * 0xCB1AB31FU;
        h ^= h >> 13U;
        h *= 0x5BD1E995U;
        h ^= h >> 15U;
        const auto &d = table[h & 255U];
        return d.x * dx + d.y * dy;
    };
    const float u = fx * fx * fx * (fx * (fx * 6 - 15) + 10);
    const float v = fy * fy * fy * (fy * (fy * 6 - 15) + 10);
    const float a = corner(ix, iy, fx, fy);
    const float b = corner(ix + 1, iy, fx - 1, fy);
    const float c = corner(ix, iy + 1, fx, fy - 1);
    const float d = corner(ix + 1, iy + 1, fx - 1, fy - 1);
    const float top = a + (b - a) * u;
    const float bottom = c + (d - c) * u;
    return 1.45F * (top + (bottom - top) * v);
}

float fractal(float x, float y, int octaves, uint32_t seed)
{
    float sum = 0;
    float strength = 0.5F;
    for (int i = 0; i < octaves; ++i) {
        sum += strength * gradient(x, y, seed + static_cast<uint32_t>(i));
        // Turned between octaves, so that the lattice never shows.
        const float turned = 1.6F * x + 1.2F * y;
        y = 1.6F * y - 1.2F * x;
        x = turned;
        strength *= 0.5F;
    }
    return sum;
}

float ridged(float x, float y, int octaves, uint32_t seed)
{
    float sum = 0;
    float strength = 0.5F;
    float above = 1;
    for (int i = 0; i < octaves; ++i) {
        float crest = 1 - std::fabs(gradient(x, y, seed + static_cast<uint32_t>(i)));
        crest *= crest;
        sum += strength * crest * above;
        above = crest;
        const float turned = 1.6F * x + 1.2F * y;
        y = 1.6F * y - 1.2F * x;
        x = turned;
        strength *= 0.5F;
    }
    return sum;
}

} // namespace Noise
