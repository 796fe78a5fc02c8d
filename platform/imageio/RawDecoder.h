// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/FileKind.h"
#include "platform/imageio/InputFile.h"

#include <QImage>

#include <optional>

/// Pictures of RAW files: of the pictures that the camera embedded, or of the sensor's data.
/// Blocks; safe from several threads.
namespace RawDecoder {

/// As ImageSource::image() promises it: of the embedded JPEGs, the largest or a smaller one that
/// may stand for it at @p maxPixel, when they are that large or about as large as the sensor's
/// image; else of the sensor's data. Where that cannot be had, the largest embedded picture is
/// shown at its size, but not without @p maxPixel: a small one must not pass for the whole. Null
/// for a TIFF file that is no RAW file.
[[nodiscard]] QImage decode(const InputFile &file, FileKind kind, std::optional<int> maxPixel);

} // namespace RawDecoder
