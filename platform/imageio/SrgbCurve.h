// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <vector>

/// The curve by which sRGB codes light (IEC 61966-2-1). Safe from several threads.
namespace SrgbCurve {

/// For every amount of light, 65535 being white, its code, 255 being white.
[[nodiscard]] const std::vector<quint8> &codes();

/// The code, 1 being white, of an amount of light from 0 to 1.
[[nodiscard]] double code(double light);

} // namespace SrgbCurve
