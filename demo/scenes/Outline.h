// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// Outlines against the sky, as heights over a horizontal position in scene units.
namespace Outline {

/// A row of conifers of about @p height, @p spacing apart; 0 between them.
[[nodiscard]] float conifers(float x, float height, float spacing, unsigned seed);

/// A mountain ridge: broad shapes with sharp crests, in [-1, 1].
[[nodiscard]] float ridge(float x, float frequency, unsigned seed);

} // namespace Outline
