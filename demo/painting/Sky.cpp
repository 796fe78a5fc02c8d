// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/painting/Sky.h"

#include "demo/painting/Noise.h"

Rgb Sky::light(float x, float y, bool withClouds) const
{
    const float length = std::sqrt(x * x + y * y + 1);
    const float up = std::max(y / length, 0.0F);
    Rgb colour = mix(zenith, horizon, std::exp(-gradient * up));

    const float sunLength = std::sqrt(sunX * sunX + sunY * sunY + 1);
    const float towards = std::max((x * sunX + y * sunY + 1) / (length * sunLength), 0.0F);
    const float near = std::pow(towards, glowWidth);
    colour += glow * (0.35F * near + 0.5F * std::pow(near, 8.0F) + 1.2F * std::pow(near, 60.0F));

    float veil = 0;
    if (withClouds && cloudCover > 0 && up > 0.004F) {
        // A flat layer seen in perspective; two looks at its thickness give it a lit side.
        const float distance = 1 / (up + 0.06F);
        const float cx = x / length * distance * cloudScale;
        const float cy = 1 / length * distance * cloudScale;
        const float shape = Noise::fractal(cx, cy, 6, cloudSeed);
        const float wide = Noise::fractal(cx * 0.35F, cy * 0.35F, 2, cloudSeed + 40);
        const float density = 0.5F + 0.8F * shape + 0.5F * wide - (1 - cloudCover);
        veil = smoothStep(0.0F, 0.45F, density) * smoothStep(0.0F, 0.09F, up);
        if (veil > 0) {
            const float dx = 0.12F * (sunX - x);
            const float dy = 0.12F * (y > sunY ? -1.0F : 1.0F);
            const float behind = Noise::fractal(cx + dx, cy + dy, 4, cloudSeed);
            const float lit = clamp01(0.55F + 1.3F * (shape - behind) - 0.25F * density);
            Rgb cloud = mix(cloudShade, cloudLight, lit);
            cloud += glow * (0.8F * near * (1 - veil * 0.6F));
            cloud = mix(cloud, horizon, 0.55F * std::exp(-9 * up));
            colour = mix(colour, cloud, 0.94F * veil);
        }
    }
    if (towards > sunSize) {
        colour += sun * ((1 - 0.85F * veil) * smoothStep(sunSize, mix(sunSize, 1, 0.25F), towards));
    }
    return colour;
}
