// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/PictureTurn.h"

PictureTurn PictureTurn::of(const Matrix &matrix)
{
    // A point (x, y), counted rightwards and down, goes to (ax + cy, bx + dy).
    const auto a = matrix[0];
    const auto b = matrix[1];
    const auto c = matrix[3];
    const auto d = matrix[4];
    const bool isStraight = a != 0 && d != 0 && b == 0 && c == 0;
    const bool isAcross = a == 0 && d == 0 && b != 0 && c != 0;
    if (isStraight) {
        return {.degrees = a > 0 ? 0 : 180, .isMirrored = (a > 0) != (d > 0)};
    }
    if (isAcross) {
        const bool isMirrored = (b > 0) == (c > 0);
        return {.degrees = (b > 0) != isMirrored ? 90 : 270, .isMirrored = isMirrored};
    }
    return {};
}

QTransform PictureTurn::transform() const
{
    return QTransform().rotate(degrees) * QTransform::fromScale(1, isMirrored ? -1 : 1);
}
