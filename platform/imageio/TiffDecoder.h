// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"
#include "platform/imageio/TiffPictures.h"

#include <QImage>

#include <optional>

/// Pictures of TIFF files (TIFF 6.0, BigTIFF): grey, palette, RGB, CMYK, YCbCr and L*a*b*, of 1 to
/// 64 bits a sample, in strips and tiles, with every compression that libtiff knows. Blocks; safe
/// from several threads.
namespace TiffDecoder {

/// The picture, or a smaller version in the file that may stand for it at @p maxPixel, as
/// ImageSource::image() promises it. Parts that damage has destroyed are black. Null when nothing
/// is left of it, for more than 400 megapixels, for more than fit into 1 GiB, and for more than 100
/// megapixels out of next to nothing.
[[nodiscard]] QImage decode(const InputFile &file, const TiffPictures &pictures,
                            std::optional<int> maxPixel);

} // namespace TiffDecoder
