// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/scenes/Stars.h"

#include "demo/painting/Noise.h"

void addStars(Canvas &canvas, const View &view, uint32_t count, float brightness)
{
    for (uint32_t i = 0; i < count; ++i) {
        const float x = 1.9F * (Noise::hash(i, view.seed, 1) - 0.5F) - view.panX * 0.2F;
        const float y = 1.3F * (Noise::hash(i, view.seed, 2) - 0.4F);
        const float rare = std::pow(Noise::hash(i, view.seed, 3), 14.0F);
        const Rgb tint = mix(srgb(0xFFD9B0), srgb(0xBFD4FF), Noise::hash(i, view.seed, 4));
        const float radius = (0.00055F + 0.0013F * rare) / view.unit();
        canvas.addDisc(
            view.pixelX(x), view.pixelY(y), std::max(radius, 0.62F),
            tint * (brightness * (0.10F + 0.35F * Noise::hash(i, view.seed, 5) + 4.5F * rare)), 0);
        if (rare > 0.35F) {
            canvas.addGlow(view.pixelX(x), view.pixelY(y), 0.012F / view.unit(),
                           tint * (0.35F * rare));
        }
    }
}
