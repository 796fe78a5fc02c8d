// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSize>

/// The orientation codes 1 to 8 of EXIF 2.32, 4.6.4: how a stored picture must be turned to be
/// upright. A code beyond them counts as 1. Pure.
namespace Orientation {

/// The code for what @p code does, then turned clockwise by @p quarters of a circle.
[[nodiscard]] int rotated(int code, int quarters);
/// The code for what @p code does, then left and right exchanged.
[[nodiscard]] int flippedHorizontally(int code);
/// The code for what @p code does, then top and bottom exchanged.
[[nodiscard]] int flippedVertically(int code);

/// Whether a picture of this code stands upright as it is stored.
[[nodiscard]] bool isUpright(int code);

/// Whether width and height change places.
[[nodiscard]] bool swapsEdges(int code);

struct Place {
    qsizetype column = 0;
    qsizetype row = 0;
};

/// Where the pixel at @p column and @p row of a stored picture of the size @p stored stands in the
/// upright one.
[[nodiscard]] Place place(int code, QSize stored, qsizetype column, qsizetype row);

} // namespace Orientation
