// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/checks/Precondition.h"
#include "platform/media/PosterFrame.h"
#include "tests/fuzz/FuzzedPicture.h"
#include "tests/fuzz/MemoryFile.h"

#include <algorithm>

// The first frames of clips.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static MemoryFile memory;
    memory.fill(data, size);
    const auto most = FuzzedPicture::maxPixel(data, size).value_or(3840);
    const auto image = posterFrame(memory.path(), most);
    precondition(image.isNull() || image.format() == QImage::Format_RGB32, "a picture is in RGB32");
    precondition(std::max(image.width(), image.height()) <= most, "a picture fits");
    return 0;
}
