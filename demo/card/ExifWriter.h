// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/card/CaptureSettings.h"
#include "demo/card/TiffDirectory.h"

#include <QSize>

/// Writes what the camera knew into its files (Exif 2.32; the maker note as Fujifilm's cameras
/// write it). Pure.
namespace ExifWriter {

/// The main directory: camera, orientation, date. For TIFF structures and JPEG files alike.
[[nodiscard]] TiffDirectory mainDirectory(const CaptureSettings &settings);

/// The Exif directory, for a picture of @p size stored pixels, maker note included.
[[nodiscard]] TiffDirectory exifDirectory(const CaptureSettings &settings, QSize size);

/// All of it as a structure of its own, for a picture of @p size stored pixels.
[[nodiscard]] QByteArray structure(const CaptureSettings &settings, QSize size);

/// @p jpeg (a JPEG file) with an Exif segment in front, @p thumbnail (a small JPEG file) in it.
[[nodiscard]] QByteArray withExif(const QByteArray &jpeg, const QByteArray &thumbnail,
                                  const CaptureSettings &settings, QSize size);

} // namespace ExifWriter
