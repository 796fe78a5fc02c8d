// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

/// Repeatable noise: the same arguments always give the same value. Safe from any thread.
namespace Noise {

/// Evenly spread in [0, 1).
[[nodiscard]] float hash(uint32_t a, uint32_t b = 0, uint32_t c = 0);

/// Gradient noise in about [-1, 1], one feature per unit.
[[nodiscard]] float gradient(float x, float y, uint32_t seed = 0);

/// Octaves of gradient noise, each half as strong and twice as fine; about [-1, 1].
[[nodiscard]] float fractal(float x, float y, int octaves, uint32_t seed = 0);

/// Sharp crests, as of mountains; [0, 1].
[[nodiscard]] float ridged(float x, float y, int octaves, uint32_t seed = 0);

} // namespace Noise
