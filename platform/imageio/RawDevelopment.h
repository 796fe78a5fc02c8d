// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"

#include <QImage>

#include <functional>
#include <optional>

/// Pictures out of a RAW file's sensor data, by LibRaw: balanced as the camera did, in sRGB, with
/// the same curve for every picture, so that an underexposed one looks like one. Blocks; safe from
/// several threads.
namespace RawDevelopment {

/// Tells the orientation, a code of EXIF, of sensor data of a size in pixels. The other code is
/// LibRaw's.
using Orientation = std::function<int(QSize stored, int code)>;

/// As ImageSource::image() promises it. Reads of each square of four pixels one where that is
/// enough for @p maxPixel, which is several times faster. Null where there is no sensor data or not
/// all of it, for more than 200 megapixels, and for more than fit into 1.5 GiB.
[[nodiscard]] QImage develop(const InputFile &file, std::optional<int> maxPixel,
                             const Orientation &orientation);

} // namespace RawDevelopment
