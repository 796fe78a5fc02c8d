// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>
#include <QSize>

/// Builds files out of boxes (ISO 14496-12) byte by byte, so that a test knows what is in them.
namespace BoxBytes {

[[nodiscard]] QByteArray box(const QByteArray &type, const QByteArray &content);
[[nodiscard]] QByteArray fullBox(const QByteArray &type, int version, quint32 flags,
                                 const QByteArray &content);

/// The property boxes of a picture's size, of its anticlockwise turns by a quarter, and of its
/// mirroring: 0 exchanges top and bottom, 1 left and right.
[[nodiscard]] QByteArray sizeProperty(QSize size);
[[nodiscard]] QByteArray turnProperty(int quarters);
[[nodiscard]] QByteArray mirrorProperty(int axis);

/// An "ipma" box that gives @p item the properties of these numbers, counted from 1.
[[nodiscard]] QByteArray associations(quint16 item, const QList<int> &properties);

struct Heif {
    static constexpr quint16 pictureItem = 1;
    static constexpr quint16 exifItem = 2;

    QList<QByteArray> properties = {};
    /// The "ipma" boxes.
    QByteArray associations = {};
    /// A TIFF block.
    QByteArray exif = {};
    /// An "iloc" box to take the place of the one that tells where the TIFF block is.
    QByteArray locations = {};
};

/// A HEIF file without the coded picture itself.
[[nodiscard]] QByteArray heif(const Heif &parts);

/// JPEG streams; those that are empty are not there.
struct Cr3Pictures {
    QByteArray thumbnail = {};
    QByteArray preview = {};
    /// The first track's; the second track's is sensor data.
    QByteArray whole = {};
};

/// Canon's CR3 with these TIFF blocks and pictures.
[[nodiscard]] QByteArray cr3(const QByteArray &main, const QByteArray &exif,
                             const Cr3Pictures &pictures = {});

} // namespace BoxBytes
