// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>

#include <filesystem>

/// Builds picture files byte by byte, so that a test knows what is in them.
namespace PictureBytes {

enum class Order { Little, Big };

struct Field {
    quint16 tag = 0;
    quint16 type = 0;
    quint32 count = 0;
    /// In the order of the block it is put into.
    QByteArray value = {};
};

[[nodiscard]] QByteArray number(quint64 value, int size, Order order = Order::Little);

[[nodiscard]] Field text(quint16 tag, const QByteArray &value);
[[nodiscard]] Field shorts(quint16 tag, const QList<quint16> &values, Order order = Order::Little);
[[nodiscard]] Field longs(quint16 tag, const QList<qint32> &values, Order order = Order::Little);
[[nodiscard]] Field signedLongs(quint16 tag, const QList<qint32> &values);
[[nodiscard]] Field fraction(quint16 tag, quint32 numerator, quint32 denominator,
                             Order order = Order::Little);
[[nodiscard]] Field opaque(quint16 tag, const QByteArray &value);

/// A directory that begins at @p offset of its block, its values behind it.
[[nodiscard]] QByteArray directory(const QList<Field> &fields, quint32 offset, quint32 next,
                                   Order order = Order::Little);

/// A TIFF block with a main directory, one of EXIF where @p exif has fields, and a second one with
/// @p thumbnail, a JPEG stream, where there is one.
[[nodiscard]] QByteArray exifBlock(QList<Field> main, const QList<Field> &exif,
                                   const QByteArray &thumbnail = {}, Order order = Order::Little);

/// A Fujifilm maker note, for the field 0x927c.
[[nodiscard]] QByteArray fujiNote(const QList<Field> &fields);

[[nodiscard]] QByteArray jpeg(const QImage &image, int quality = 95);

/// @p stream with a further segment behind its first two bytes.
[[nodiscard]] QByteArray withSegment(const QByteArray &stream, uchar marker,
                                     const QByteArray &content);
[[nodiscard]] QByteArray withExif(const QByteArray &stream, const QByteArray &block);

/// A RAF file around @p stream, whose sensor has the size @p sensor.
[[nodiscard]] QByteArray raf(const QByteArray &stream, QSize sensor);

/// A file of Sigma around @p stream, in front of which stands a picture of another format.
[[nodiscard]] QByteArray x3f(const QByteArray &stream, QSize sensor, quint16 version = 2);

/// A picture whose corners differ: red, green, blue and white, from the top left in reading
/// direction.
[[nodiscard]] QImage corners(QSize size);

void write(const std::filesystem::path &path, const QByteArray &bytes);

} // namespace PictureBytes
