// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QRgb>

/// Colours of CIE L*a*b* under the light D50. Pure.
namespace LabColors {

/// The code in sRGB, clipped where sRGB does not reach. @p lightness is 0 to 100.
[[nodiscard]] QRgb toSrgb(double lightness, double a, double b);

} // namespace LabColors
