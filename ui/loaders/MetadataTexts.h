// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

struct ImageMetadata;

/// What the information bar says about a file's capture settings. A value that is missing leaves
/// no text.
namespace MetadataTexts {

/// Pixel size, aperture, exposure time and ISO, in this order.
[[nodiscard]] QStringList capture(const ImageMetadata &metadata);

/// Empty without a lens.
[[nodiscard]] QString lens(const ImageMetadata &metadata);

/// The look set in the camera: film simulation first.
[[nodiscard]] QStringList fuji(const ImageMetadata &metadata);

} // namespace MetadataTexts
