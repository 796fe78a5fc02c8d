// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/InputFile.h"

#include <QImage>

/// What LibRaw finds as a RAW file's embedded picture. Blocks; safe from several threads.
namespace LibRawThumbnail {

/// The largest one's place; an empty stretch when there is none. What lies there may be no JPEG.
[[nodiscard]] ByteRange find(const InputFile &file);

/// The largest one, as stored, if it is kept as plain pixels and its longest edge is at least
/// @p leastEdge. Format_RGB32, or null.
[[nodiscard]] QImage bitmap(const InputFile &file, int leastEdge);

} // namespace LibRawThumbnail
