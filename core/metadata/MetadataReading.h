// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/metadata/ImageMetadata.h"

#include <filesystem>
#include <optional>

/// Reads the capture settings of files; an interface so that tests can hand over made-up ones.
class MetadataReading {
public:
    virtual ~MetadataReading() = default;

    /// The settings of the file at @p url, or nothing when it cannot be read. Blocks on file
    /// input; safe from several threads at once.
    [[nodiscard]] virtual std::optional<ImageMetadata>
    read(const std::filesystem::path &url) const = 0;

protected:
    MetadataReading() = default;
    MetadataReading(const MetadataReading &) = default;
    MetadataReading &operator=(const MetadataReading &) = default;
};
