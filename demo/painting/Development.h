// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/painting/Canvas.h"

/// From the light of a scene to the camera's finished picture.
struct Development {
    float exposure = 1;
    float contrast = 1; ///< 1 is the film curve as it is
    float saturation = 1;
    float warmth = 0;    ///< -1 cold to 1 warm
    float bloom = 0.06F; ///< of the highlights, by the lens
    float vignette = 0.35F;
    float grain = 1;
    float softness = 0; ///< missed focus, in thousandths of the long edge
    float shake = 0;    ///< camera shake, in thousandths of the long edge
    bool monochrome = false;

    /// The picture with @p longEdge pixels along its longer side, opaque. @p seed drives the grain.
    [[nodiscard]] QImage develop(Canvas light, int longEdge, uint32_t seed) const;
};
