// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"

#include "platform/imageio/FileKind.h"
#include "platform/imageio/FileProperties.h"
#include "platform/imageio/HeifDecoder.h"
#include "platform/imageio/JpegDecoder.h"
#include "platform/imageio/RawDecoder.h"
#include "platform/imageio/TiffDecoder.h"

#include <new>
#include <utility>

ImageSource::ImageSource(InputFile file)
    : m_file(std::move(file))
{
}

std::optional<ImageSource> ImageSource::open(const std::filesystem::path &path)
{
    auto file = InputFile::open(path);
    if (!file) {
        return std::nullopt;
    }
    return ImageSource(std::move(*file));
}

std::optional<PropertyDictionary> ImageSource::properties() const
{
    return FileProperties::read(m_file);
}

QImage ImageSource::image(std::optional<int> maxPixel) const
{
    try {
        return decode(maxPixel);
    } catch (const std::bad_alloc &) {
        return {}; // no picture is worth the program
    }
}

QImage ImageSource::decode(std::optional<int> maxPixel) const
{
    PagedReader reader(m_file);
    const auto kind = fileKind(reader);
    switch (kind) {
    case FileKind::Jpeg:
        return JpegDecoder::decode(m_file, {0, m_file.size()}, maxPixel);
    case FileKind::Media:
        return HeifDecoder::decode(m_file, maxPixel);
    case FileKind::Tiff:
        if (const auto pictures = TiffPictures::find(reader)) {
            return TiffDecoder::decode(m_file, *pictures, maxPixel);
        }
        return RawDecoder::decode(m_file, kind, maxPixel);
    default:
        return RawDecoder::decode(m_file, kind, maxPixel);
    }
}
