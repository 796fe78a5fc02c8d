// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/painting/Rgb.h"

/// The air above the scene: a gradient, a sun with its glow, and clouds.
struct Sky {
    Rgb zenith = srgb(0x3A6FB0);
    Rgb horizon = srgb(0xB9D3E8);
    Rgb glow = srgb(0xFFD9A0); ///< around the sun
    Rgb sun = {30, 26, 20};
    float sunX = 0;          ///< direction, right
    float sunY = 0.3F;       ///< direction, up
    float sunSize = 0.9996F; ///< cosine of the disc's radius
    float gradient = 3;      ///< how quickly the horizon gives way to the zenith
    float glowWidth = 8;     ///< larger is narrower

    Rgb cloudLight = {1, 1, 1};
    Rgb cloudShade = srgb(0x9AA6B8);
    float cloudCover = 0; ///< 0 none, 1 overcast
    float cloudScale = 1;
    unsigned cloudSeed = 7;

    /// Light from the direction (@p x right, @p y up, 1 forward); clouds only where wanted.
    [[nodiscard]] Rgb light(float x, float y, bool withClouds = true) const;
};
