// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/painting/Sky.h"

#include "demo/painting/Noise.h"

static float eighth(float v)
{
    v *= v;
    v *= v;
    return v * v;
}

Rgb Sky::light(float x, float y, bool withClouds) const
{
    const float length = std::sqrt(x * x + y * y + 1);
    const float up = std::max(y / length, 0.0F);
    Rgb colour = mix(zenith, horizon, std::exp(-gradient * up));

    const float sunLength = std::sqrt(sunX * sunX + sunY * sunY + 1);
    const float towards = std::max((x * sunX + y * sunY + 1) / (length * sunLength), 0.0F);
    const float near = std::pow(towards, glowWidth);
    const float near8 = eighth(near);
    colour += glow * (0.35F * near + 0.5F * near8 + 1.2F * eighth(near8));

    float veil = 0;
    if (withClouds && cloudCover > 0 && up > 0.004F) {
        // A flat layer seen in perspective; two looks at its thickness give it a lit side.
        const float distance = 1 / (up + 0.06F);
        const float cx = x / length * distance * cloudScale;
        const float cy = 1 / length * distance * cloudScale;
        const float shape = Noise::fractal(cx, cy, 5, cloudSeed);
        const float wide = Noise::fractal(cx * 0.35F, cy * 0.35F, 1, cloudSeed + 40);
        const float density = 0.56F + 0.95F * shape + 0.6F * wide - (1 - cloudCover);
        veil = smoothStep(0.0F, 0.36F, density) * smoothStep(0.0F, 0.09F, up);
        if (veil > 0) {
            const float dx = 0.12F * (sunX - x);
            const float dy = 0.12F * (y > sunY ? -1.0F : 1.0F);
            const float behind = Noise::fractal(cx + dx, cy + dy, 3, cloudSeed);
            const float lit = clamp01(0.62F + 2.3F * (shape - behind) - 0.5F * density);
            Rgb cloud = mix(cloudShade, cloudLight, lit);
            cloud += glow * (0.8F * near * (1 - veil * 0.6F));
            cloud = mix(cloud, horizon, 0.5F * std::exp(-11 * up));
            colour = mix(colour, cloud, 0.94F * veil);
        }
    }
    if (towards > sunSize) {
        colour += sun * ((1 - 0.85F * veil) * smoothStep(sunSize, mix(sunSize, 1, 0.25F), towards));
    }
    return colour;
}
