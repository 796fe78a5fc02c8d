// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/metadata/ExifReader.h"
#include "platform/checks/Precondition.h"
#include "platform/imageio/ImageSource.h"
#include "tests/fuzz/MemoryFile.h"

// What files of every kind say about themselves, and the settings that follow.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static MemoryFile memory;
    memory.fill(data, size);
    const auto source = ImageSource::open(memory.path());
    precondition(source.has_value(), "the file is open");
    if (const auto properties = source->properties()) {
        (void)ExifReader::metadata(*properties).exposureText();
    }
    return 0;
}
