// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/DecimalText.h"

#include <array>
#include <charconv>

QString decimalText(double value, int decimals)
{
    std::array<char, 512> buffer = {}; // the largest number has 309 digits before the point
    const auto written =
        std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::fixed, decimals);
    return QString::fromLatin1(buffer.data(), written.ptr - buffer.begin());
}
