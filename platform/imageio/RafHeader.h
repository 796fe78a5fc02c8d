// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/PagedReader.h"

#include <optional>

/// The header of Fujifilm's RAW files: big-endian; offset and length of the embedded JPEG at the
/// bytes 84 and 88, of the records about the sensor at 92 and 96 (as LibRaw and ExifTool read it;
/// there is no public standard).
struct RafHeader {
    ByteRange jpeg = {};
    /// Pixels of the sensor image. Absent when the records do not tell.
    std::optional<qint64> width = {};
    std::optional<qint64> height = {};

    /// Nothing when no such file begins here.
    [[nodiscard]] static std::optional<RafHeader> read(PagedReader &reader);
};
