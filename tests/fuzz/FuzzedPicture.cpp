// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/fuzz/FuzzedPicture.h"

#include "platform/checks/Precondition.h"
#include "platform/imageio/ImageSource.h"
#include "tests/fuzz/MemoryFile.h"

#include <algorithm>

std::optional<int> FuzzedPicture::maxPixel(const uint8_t *data, size_t size)
{
    switch (size == 0 ? 0 : data[size - 1] % 3) {
    case 0:
        return 256;
    case 1:
        return 2160;
    default:
        return std::nullopt;
    }
}

void FuzzedPicture::decode(const uint8_t *data, size_t size, IsWanted isWanted)
{
    static MemoryFile memory;
    memory.fill(data, size);
    const auto file = InputFile::open(memory.path());
    precondition(file.has_value(), "the file is open");
    if (!isWanted(*file)) {
        return; // another target's
    }
    const auto most = maxPixel(data, size);
    const auto image = ImageSource::open(memory.path())->image(most);
    precondition(image.isNull() || image.format() == QImage::Format_RGB32, "a picture is in RGB32");
    precondition(!most || std::max(image.width(), image.height()) <= *most, "a picture fits");
}
