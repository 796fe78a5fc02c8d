// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/InputFile.h"

#include <QImage>

#include <optional>

/// Pictures out of JPEG streams (ITU-T T.81, JFIF, EXIF). Blocks; safe from several threads.
namespace JpegDecoder {

/// Which preview inside the stream may stand for the picture.
enum class Preview { Allowed, Ignored };

/// What the colours are where the stream has no profile and its EXIF block names none.
enum class Untagged { Srgb, AdobeRgb };

/// The picture of the stream that fills @p range, as ImageSource::image() promises it.
/// @p orientation replaces the one that the stream's own EXIF block gives, @p replacingProfile what
/// it says of its colours: with an empty one they stay as they are stored. Null for damaged
/// streams, for more than 400 megapixels, and for more than fit into 1 GiB.
[[nodiscard]] QImage decode(const InputFile &file, ByteRange range, std::optional<int> maxPixel,
                            std::optional<int> orientation = std::nullopt,
                            Preview preview = Preview::Allowed, Untagged untagged = Untagged::Srgb,
                            const std::optional<QByteArray> &replacingProfile = std::nullopt);

/// The smallest of the library's fast scales, in eighths, that still reaches @p target pixels when
/// the longest edge has @p longest.
[[nodiscard]] int scaleFor(int longest, int target);

/// @p size made to fit @p maxPixel, never enlarged, no edge below one pixel.
[[nodiscard]] QSize fitted(QSize size, std::optional<int> maxPixel);

/// Whether a preview may stand for the picture at @p maxPixel: large enough, no larger than the
/// picture, and of the same aspect ratio within a pixel.
[[nodiscard]] bool standsFor(QSize preview, QSize picture, std::optional<int> maxPixel);

} // namespace JpegDecoder
