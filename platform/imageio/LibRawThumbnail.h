// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/InputFile.h"

/// Where LibRaw finds a RAW file's embedded picture. Blocks; safe from several threads.
namespace LibRawThumbnail {

/// The largest one's place; an empty stretch when there is none. What lies there may be no JPEG.
[[nodiscard]] ByteRange find(const InputFile &file);

} // namespace LibRawThumbnail
