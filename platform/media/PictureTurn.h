// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QTransform>

#include <array>
#include <cstdint>

/// What is to be done to a clip's pictures until they are upright: they are turned, and then
/// perhaps mirrored.
struct PictureTurn {
    /// Nine numbers, three to the row, as in ISO 14496-12, 6.2.2.
    using Matrix = std::array<int32_t, 9>;

    int degrees = 0;         ///< clockwise, in degrees: 0, 90, 180 or 270
    bool isMirrored = false; ///< up is down

    /// By right angles alone: a matrix that turns otherwise changes nothing.
    [[nodiscard]] static PictureTurn of(const Matrix &matrix);

    [[nodiscard]] QTransform transform() const;

    bool operator==(const PictureTurn &) const = default;
};
