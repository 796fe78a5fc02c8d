// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/metadata/ImageMetadata.h"

#include <cmath>

using namespace Qt::StringLiterals;

/// From this time on a fraction reads worse than a decimal. Seconds.
constexpr double decimalThreshold = 0.4;

std::optional<QString> ImageMetadata::exposureText() const
{
    if (!exposureTime || !(*exposureTime > 0)) {
        return std::nullopt;
    }
    if (*exposureTime >= decimalThreshold) {
        return QString::asprintf("%.1fs", *exposureTime);
    }
    // As text of a rounded double: the inverse of a denormal time exceeds every integer type.
    return u"1/%1s"_s.arg(std::round(1 / *exposureTime), 0, 'f', 0);
}
