// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/support/HeifBytes.h"

#include <QImage>

/// HEIF items with pictures in them.
namespace HeifPictures {

constexpr QRgb red = qRgb(255, 0, 0);
constexpr QRgb green = qRgb(0, 255, 0);
constexpr QRgb blue = qRgb(0, 0, 255);
constexpr QRgb white = qRgb(255, 255, 255);
constexpr QRgb grey = qRgb(128, 128, 128);

/// The id of what is shown.
constexpr quint16 main = 1;

/// Whether there is an encoder at all.
[[nodiscard]] bool canEncode();

[[nodiscard]] QImage plain(QSize size, QRgb colour);

[[nodiscard]] bool isClose(QRgb one, QRgb other, int tolerance = 6);

/// An item with @p image, its size, the decoder's configuration, and @p properties. For @p chroma
/// and @p bits see HevcEncoder.
[[nodiscard]] HeifBytes::Item coded(quint16 id, const QImage &image,
                                    const QList<QByteArray> &properties = {},
                                    const char *chroma = "444", int bits = 8);

/// A grid, the item main, and its tiles of @p colours in rows of @p columns.
[[nodiscard]] QList<HeifBytes::Item> tiled(int columns, const QList<QRgb> &colours, QSize tile,
                                           QSize size);

} // namespace HeifPictures
