// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <array>

/// Pictures made for screens of high dynamic range, shown on one that has none. Pure.
namespace ToneCurve {

constexpr int steps = 4096;

/// For each coded value, in 4096 steps of the full range, what sRGB's curve wants for it.
using Table = std::array<quint8, steps>;

/// The table for a transfer characteristic of ITU-T H.273: PQ (16) and HLG (18) have one. Null for
/// all others.
///
/// Both are read as ITU-R BT.2100 has them on a screen of 1000 cd/m². What is darker than some 90
/// stays as bright as it is on a screen whose white is at 203, the white of paper in BT.2408; what
/// is brighter is drawn in by the curve of BT.2390, 5.4, so that 1000 becomes white. Each colour
/// for itself: what is brightest loses colour, as on film.
[[nodiscard]] const Table *table(int transfer);

} // namespace ToneCurve
