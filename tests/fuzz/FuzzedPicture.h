// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"

#include <cstddef>
#include <cstdint>
#include <optional>

/// Decodes fuzzed bytes as a picture.
namespace FuzzedPicture {

/// Whether a target is about this file.
using IsWanted = bool (*)(const InputFile &file);

/// To fit 256 or 2160 pixels or whole, as the last byte says, which is also part of the file. Ends
/// the program when the picture is not of the form that is promised.
void decode(const uint8_t *data, size_t size, IsWanted isWanted);

/// What the last byte says. Nothing for the whole picture.
[[nodiscard]] std::optional<int> maxPixel(const uint8_t *data, size_t size);

} // namespace FuzzedPicture
