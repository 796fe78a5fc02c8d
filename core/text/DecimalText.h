// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// @p value with @p decimals digits, at most 100, behind a decimal point, whatever the locale. Its
/// exact binary value is rounded to the nearest such text, a tie to the even digit, as C's printf
/// does; QString's own conversions round ties up.
[[nodiscard]] QString decimalText(double value, int decimals);
