// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/PagedReader.h"

#include <QList>

#include <optional>

/// The header and the directory of Sigma's RAW files: little-endian; the directory's place is in
/// the file's last four bytes, and its entries give offset, length and type of the sections (from
/// the public descriptions of Foveon's format and ExifTool's documentation; there is no standard).
struct X3fDirectory {
    /// Pixels of the sensor image. Absent when the header does not tell.
    std::optional<qint64> width = {};
    std::optional<qint64> height = {};
    /// The sections of embedded JPEG pictures, in the file's order.
    QList<ByteRange> jpegs = {};

    /// Nothing when no such file begins here, or without a directory, as in one cut short.
    [[nodiscard]] static std::optional<X3fDirectory> read(PagedReader &reader);
};
