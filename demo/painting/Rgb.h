// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <algorithm>
#include <cmath>

/// Light in linear sRGB; 1 is paper white, brighter values are highlights. Also serves as a vector.
struct Rgb {
    float r = 0;
    float g = 0;
    float b = 0;

    constexpr Rgb &operator+=(const Rgb &o)
    {
        r += o.r;
        g += o.g;
        b += o.b;
        return *this;
    }
    constexpr Rgb &operator*=(float k)
    {
        r *= k;
        g *= k;
        b *= k;
        return *this;
    }
    [[nodiscard]] constexpr float luminance() const
    {
        return 0.2126F * r + 0.7152F * g + 0.0722F * b;
    }

    bool operator==(const Rgb &) const = default;
};

constexpr Rgb operator+(Rgb a, const Rgb &b)
{
    return a += b;
}
constexpr Rgb operator-(const Rgb &a, const Rgb &b)
{
    return {a.r - b.r, a.g - b.g, a.b - b.b};
}
constexpr Rgb operator*(Rgb a, float k)
{
    return a *= k;
}
constexpr Rgb operator*(float k, Rgb a)
{
    return a *= k;
}
constexpr Rgb operator*(const Rgb &a, const Rgb &b)
{
    return {a.r * b.r, a.g * b.g, a.b * b.b};
}
constexpr float mix(float a, float b, float t)
{
    return a + (b - a) * t;
}
constexpr Rgb mix(const Rgb &a, const Rgb &b, float t)
{
    return a + (b - a) * t;
}
constexpr float clamp01(float v)
{
    return v < 0 ? 0 : v > 1 ? 1 : v;
}

/// 0 at @p from, 1 at @p to, smooth between; @p from may be the larger one.
constexpr float smoothStep(float from, float to, float v)
{
    const float t = clamp01((v - from) / (to - from));
    return t * t * (3 - 2 * t);
}

/// Linear light of an sRGB colour given as 0xRRGGBB (IEC 61966-2-1, power 2.2 is close enough).
inline Rgb srgb(unsigned hex)
{
    const auto channel = [hex](int shift) {
        return std::pow(static_cast<float>((hex >> shift) & 0xFFU) / 255.0F, 2.2F);
    };
    return {channel(16), channel(8), channel(0)};
}
