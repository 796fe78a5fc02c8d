// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"

#include <QImage>

#include <optional>

/// Pictures out of HEIF files (ISO 23008-12) with HEVC or JPEG in them. Blocks; safe from several
/// threads.
namespace HeifDecoder {

/// The primary picture of @p file, as ImageSource::image() promises it, turned and cropped as the
/// item says and by nothing else: the EXIF block of such files says where the camera's top was, or
/// what an editor has forgotten. A thumbnail stands for the picture where that is seen by nobody.
///
/// What is transparent is over black, as all that surrounds a picture here. Pictures for screens of
/// high dynamic range are drawn in, see ToneCurve; gain maps are left out. Null for damaged files,
/// other codecs, more than 400 megapixels, and more than fit into 1 GiB.
[[nodiscard]] QImage decode(const InputFile &file, std::optional<int> maxPixel);

} // namespace HeifDecoder
