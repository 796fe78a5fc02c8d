// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/PropertyDictionary.h"
#include "platform/imageio/TiffReader.h"

/// Puts the tags of EXIF (EXIF 2.32, 4.6) and of Fujifilm's maker note into properties. Integer
/// types become integers, fractions floating-point numbers, and a tag whose value cannot be read
/// is absent. The maker note's tags and names are those of ExifTool's documentation.
namespace ExifProperties {

/// "Orientation", "{Exif}" and "{MakerFuji}" of the structure whose first directory is the main
/// one.
[[nodiscard]] PropertyDictionary fromMain(const TiffReader &tiff);

/// "{Exif}" and "{MakerFuji}" of the structure whose first directory is that of EXIF.
[[nodiscard]] PropertyDictionary fromExif(const TiffReader &tiff);

/// Adds "PixelWidth" and "PixelHeight" of the main image in the structure of a TIFF or RAW file.
void addPixelSize(PropertyDictionary &properties, const TiffReader &tiff);

/// Adds both, when both are known.
void addPixelSize(PropertyDictionary &properties, std::optional<qint64> width,
                  std::optional<qint64> height);

} // namespace ExifProperties
