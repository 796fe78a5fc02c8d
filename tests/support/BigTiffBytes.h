// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/support/PictureBytes.h"

/// Builds BigTIFF files byte by byte.
namespace BigTiffBytes {

/// A number of eight bytes, which only such files have.
[[nodiscard]] PictureBytes::Field wide(quint16 tag, quint64 value,
                                       PictureBytes::Order order = PictureBytes::Order::Little);

/// A file with a main directory and one of EXIF. Fields are those of PictureBytes, in @p order.
[[nodiscard]] QByteArray bigTiff(QList<PictureBytes::Field> main,
                                 const QList<PictureBytes::Field> &exif,
                                 PictureBytes::Order order = PictureBytes::Order::Little);

} // namespace BigTiffBytes
