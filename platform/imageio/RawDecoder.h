// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/FileKind.h"
#include "platform/imageio/InputFile.h"

#include <QImage>

#include <optional>

/// Pictures of RAW files: of the JPEGs that the camera embedded, never of the sensor's data.
/// Blocks; safe from several threads.
namespace RawDecoder {

/// The largest embedded picture, or a smaller one that may stand for it at @p maxPixel, as
/// ImageSource::image() promises it. Without @p maxPixel only a picture that is about as large as
/// the sensor's image counts: a small one must not pass for the whole. Null for a TIFF file that is
/// no RAW file.
[[nodiscard]] QImage decode(const InputFile &file, FileKind kind, std::optional<int> maxPixel);

} // namespace RawDecoder
