// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/FileKind.h"
#include "platform/imageio/PagedReader.h"
#include "platform/imageio/TiffReader.h"

/// Whether the colours of a camera's picture without a colour profile are those of Adobe RGB, as
/// cameras write them when they are set to it: DCF 2.0, 4.4, and EXIF 2.32, 4.6.5.
namespace DcfColors {

/// What the EXIF directory below the first directory of @p tiff says.
[[nodiscard]] bool areAdobeRgb(const TiffReader &tiff);

/// The same for the previews that a RAW file embeds.
[[nodiscard]] bool areAdobeRgb(PagedReader &reader, FileKind kind);

} // namespace DcfColors
