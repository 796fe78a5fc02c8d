// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/metadata/MetadataReading.h"
#include "platform/imageio/PropertyDictionary.h"

/// Reads the settings that a camera wrote into its files. Stateless.
class ExifReader final : public MetadataReading {
public:
    /// Of a file with a video extension only the date of its creation, whatever it contains.
    /// Of any other file what it says as an image: nothing when it cannot be opened or is no
    /// picture, otherwise a record, possibly an empty one.
    [[nodiscard]] std::optional<ImageMetadata>
    read(const std::filesystem::path &url) const override;

    /// What @p properties, as an image source gives them, say. Pure.
    [[nodiscard]] static ImageMetadata metadata(const PropertyDictionary &properties);
};
