// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/painting/Canvas.h"
#include "demo/painting/Development.h"
#include "demo/painting/View.h"

#include <QDateTime>

#include <vector>

/// One clip of the sample card before it is filmed.
struct PlannedClip {
    enum class Weather { Dry, Snow, Rain };
    enum class Codec { H264, Hevc };

    Canvas (*scene)(const View &) = nullptr;
    float moment = 0;
    uint32_t place = 1;
    Development development = {};
    Weather weather = Weather::Dry;
    float pan = 0;         ///< to the right, in pixels a second
    bool upright = false;  ///< the camera is held turned to the right, like Exif orientation 6
    bool hasSound = false; ///< the surf
    Codec codec = Codec::H264;
    const char *extension = "MOV";
    int frames = 40;
    QDateTime captured = {};

    /// All clips of the card in the order of filming.
    [[nodiscard]] static std::vector<PlannedClip> all(uint32_t seed);
};
