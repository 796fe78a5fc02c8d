// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/PagedReader.h"

#include <QList>

#include <optional>

/// What the markers before the first scan of a JPEG stream say (ITU-T T.81, Annex B).
struct JpegMarkers {
    /// Pixels, as stored. Absent without a usable frame header.
    std::optional<qint64> width = {};
    std::optional<qint64> height = {};
    bool hasFrame = false;
    /// Whether the frame is of a kind that is shown: 8 bits, baseline, extended or progressive.
    /// The lossless frames of sensor data are not.
    bool isPicture = false;
    /// The TIFF structure in the APP1 segment of EXIF.
    std::optional<ByteRange> exif = {};
    /// The contents of the APP2 segments, where colour profiles are among others.
    QList<ByteRange> applicationData2 = {};

    /// How far to walk: the EXIF block and the frame header often lie in different pages.
    enum class Until { Scan, ExifAndSize, Exif };

    /// Walks the markers of the stream that fills @p range, at most to the first scan; nothing if
    /// no JPEG begins there.
    [[nodiscard]] static std::optional<JpegMarkers> read(PagedReader &reader, ByteRange range,
                                                         Until until = Until::Scan);
};
