// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/TiffLayout.h"

#include <QtGlobal>

/// The samples of a TIFF image, as libtiff hands them out, as numbers. Pure.
namespace TiffSamples {

/// How many bytes @p count pixels take in a row of libtiff's: of all samples, or of one plane.
[[nodiscard]] qint64 rowLength(const TiffLayout &layout, qint64 count);

/// Sample number @p sample of @p count pixels of a row that begins at @p row, from 0 to 65535
/// whatever the width of the numbers; the entries of a palette as they are.
void unpack(const TiffLayout &layout, const uchar *row, int sample, int count, quint16 *values);

} // namespace TiffSamples
