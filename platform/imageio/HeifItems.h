// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/PagedReader.h"

#include <optional>

/// What the item boxes of a HEIF file (ISO 14496-12, 8.11, and ISO 23008-12) say of its primary
/// item.
struct HeifItems {
    /// Pixels as stored, before rotation and mirroring (ispe).
    std::optional<qint64> width = {};
    std::optional<qint64> height = {};
    /// The EXIF code of the item's rotations and mirrorings (irot, imir), applied in their order.
    int orientation = 1;
    /// The TIFF structure in the item of type Exif.
    std::optional<ByteRange> exif = {};

    /// Nothing when the file has no such boxes or no primary item.
    [[nodiscard]] static std::optional<HeifItems> read(PagedReader &reader);
};
