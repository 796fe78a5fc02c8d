// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/painting/Canvas.h"
#include "demo/painting/View.h"

/// Adds @p count stars of all sizes to the light of a night sky.
void addStars(Canvas &canvas, const View &view, uint32_t count, float brightness);
