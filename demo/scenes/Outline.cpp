// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Outline.h"

#include "demo/painting/Noise.h"
#include "demo/painting/Rgb.h"

namespace Outline {

float conifers(float x, float height, float spacing, unsigned seed)
{
    float top = 0;
    const float cell = std::floor(x / spacing);
    for (int i = -2; i <= 2; ++i) {
        const auto id = static_cast<unsigned>(static_cast<int>(cell) + i + 100000);
        const float grove =
            0.5F + 0.5F * Noise::gradient((cell + static_cast<float>(i)) * 0.11F, 3, seed);
        const float tall = height * (0.4F + 0.6F * Noise::hash(id, seed)) * (0.45F + 0.75F * grove);
        const float centre = (cell + static_cast<float>(i) + Noise::hash(id, seed, 9)) * spacing;
        const float width = tall * (0.15F + 0.07F * Noise::hash(id, seed, 5));
        const float away = std::fabs(x - centre) / width;
        if (away < 1) {
            // Branches: a saw that hangs down from the trunk, uneven from tier to tier.
            const float tiers = 9 + 5 * Noise::hash(id, seed, 3);
            const float saw = away * tiers - std::floor(away * tiers);
            const float rough = Noise::hash(id, static_cast<unsigned>(away * tiers), seed);
            const float side = x < centre ? 0.03F : -0.03F;
            const float shape = 1 - away + (0.07F + side) * (saw - 0.5F) + 0.04F * (rough - 0.5F);
            top = std::max(top, tall * shape);
        }
    }
    return top;
}

float ridge(float x, float frequency, unsigned seed)
{
    const float broad = Noise::fractal(x * frequency, 0.37F, 3, seed);
    const float sharp = Noise::ridged(x * frequency * 1.7F, 7.1F, 6, seed + 11) - 0.5F;
    return 0.75F * broad + 0.6F * sharp;
}

} // namespace Outline
