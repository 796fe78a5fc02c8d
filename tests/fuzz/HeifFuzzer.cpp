// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/FileKind.h"
#include "tests/fuzz/FuzzedPicture.h"

// Pictures of HEIF files.
static bool isWanted(const InputFile &file)
{
    PagedReader reader(file);
    return fileKind(reader) == FileKind::Media;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedPicture::decode(data, size, isWanted);
    return 0;
}
