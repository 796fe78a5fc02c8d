// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/card/CaptureSettings.h"
#include "demo/painting/Canvas.h"
#include "demo/painting/Development.h"
#include "demo/painting/View.h"

#include <vector>

/// One shot of the sample card before it is taken: where, how, and what the camera made of it.
struct PlannedShot {
    Canvas (*scene)(const View &) = nullptr;
    float moment = 0;
    uint32_t place = 1;
    int turned = 1;   ///< Exif orientation; 6 and 8 are upright frames
    int burst = 0;    ///< shots of one burst bear the same number and are painted once; 0 is alone
    float shiftX = 0; ///< within a burst, in hundredths of the frame's width
    float shiftY = 0;
    Development development = {};
    CaptureSettings settings = {};
    float subjectX = -1; ///< of the upright frame, 0 to 1; negative records none
    float subjectY = -1;
    bool raw = false;  ///< a RAW file beside the picture
    bool heif = false; ///< the picture is a HEIF file, else a JPEG file
    /// Of the camera's full size, along the edges.
    float size = 1;

    /// The whole card in the order of shooting.
    [[nodiscard]] static std::vector<PlannedShot> all(uint32_t seed);
};
