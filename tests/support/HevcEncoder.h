// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QImage>

/// Pictures coded as HEVC, the way libheif and x265 do it: BT.601, full range.
namespace HevcEncoder {

struct Coded {
    /// A whole "hvcC" box.
    QByteArray configuration;
    QByteArray data;
};

/// The picture in best quality; nothing in it when it does not work. @p chroma is "420", "422" or
/// "444"; without colours, "400". @p bits are 8, 10 or 12.
[[nodiscard]] Coded encode(const QImage &image, const char *chroma = "444", int bits = 8);

} // namespace HevcEncoder
