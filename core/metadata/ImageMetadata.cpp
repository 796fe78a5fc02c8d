// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/metadata/ImageMetadata.h"

#include "core/text/DecimalText.h"

#include <cmath>

using namespace Qt::StringLiterals;

/// From this time on a fraction reads worse than a decimal. Seconds.
constexpr double decimalThreshold = 0.4;

std::optional<QString> ImageMetadata::exposureText() const
{
    if (!exposureTime || !(*exposureTime > 0) || !std::isfinite(*exposureTime) ||
        !std::isfinite(1 / *exposureTime)) {
        return std::nullopt;
    }
    if (*exposureTime >= decimalThreshold) {
        return decimalText(*exposureTime, 1) + u's';
    }
    // As text of a rounded double: the inverse of a tiny time exceeds every integer type.
    return u"1/"_s + decimalText(std::round(1 / *exposureTime), 0) + u's';
}
