// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"

#include "platform/imageio/FileProperties.h"

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

QImage ImageSource::image(std::optional<int>) const
{
    return {}; // TODO: no format is known yet, so no file has a picture
}
