// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"
#include "platform/imageio/PropertyDictionary.h"

#include <QImage>

#include <filesystem>
#include <optional>

/// One image file: its properties and its picture. What a file is is told by its content, never by
/// its name. Holds a descriptor for as long as it lives, so do not keep it. Everything blocks;
/// nothing throws, prints, or shares state with another source: use one per thread.
class ImageSource {
public:
    /// Nothing when the file cannot be opened or is no regular file.
    [[nodiscard]] static std::optional<ImageSource> open(const std::filesystem::path &path);

    /// The properties of the first image, nothing when the file is no picture that we know.
    /// Top level: "PixelWidth", "PixelHeight" (as stored, pixels), "Orientation" (the codes 1 to 8
    /// of EXIF), "{Exif}" and, for Fujifilm's files, "{MakerFuji}" with the names that EXIF 2.32
    /// and the maker note's known tags have. Reads a few KiB and decodes no pixel.
    [[nodiscard]] std::optional<PropertyDictionary> properties() const;

    /// The picture, upright, in sRGB, Format_RGB32; a null image when there is none. Its longest
    /// edge is at most @p maxPixel (pixels, at least 1) but never enlarged; without @p maxPixel it
    /// has its whole size.
    [[nodiscard]] QImage image(std::optional<int> maxPixel) const;

private:
    explicit ImageSource(InputFile file);

    [[nodiscard]] QImage decode(std::optional<int> maxPixel) const;

    InputFile m_file;
};
