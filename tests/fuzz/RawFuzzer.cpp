// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/FileKind.h"
#include "platform/imageio/TiffPictures.h"
#include "tests/fuzz/FuzzedPicture.h"

// Pictures of RAW files: of those that cameras embed, and of the sensor's data.
static bool isWanted(const InputFile &file)
{
    PagedReader reader(file);
    switch (fileKind(reader)) {
    case FileKind::Jpeg:
    case FileKind::Media:
        return false;
    case FileKind::Tiff:
        return !TiffPictures::find(reader);
    default:
        return true;
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedPicture::decode(data, size, isWanted);
    return 0;
}
