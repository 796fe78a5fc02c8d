// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/BoxBytes.h"

#include "tests/support/PictureBytes.h"

namespace {

QByteArray big(qint64 value, int size)
{
    return PictureBytes::number(static_cast<quint64>(value), size, PictureBytes::Order::Big);
}

QByteArray itemEntry(quint16 item, const QByteArray &type)
{
    return BoxBytes::fullBox("infe", 2, 0, big(item, 2) + big(0, 2) + type + '\0');
}

/// The picture has two extents, which the reader must pass, the TIFF block one.
QByteArray itemLocations(qint64 exifAt, qint64 length)
{
    constexpr int fourByteOffsetsAndLengths = 0x44;
    const auto head = big(fourByteOffsetsAndLengths, 1) + big(0, 1) + big(2, 2);
    const auto picture = big(BoxBytes::Heif::pictureItem, 2) + big(0, 2) + big(0, 2) + big(2, 2) +
                         big(1, 4) + big(2, 4) + big(3, 4) + big(4, 4);
    const auto exif = big(BoxBytes::Heif::exifItem, 2) + big(0, 2) + big(0, 2) + big(1, 2) +
                      big(exifAt, 4) + big(length, 4);
    return BoxBytes::fullBox("iloc", 1, 0, head + picture + exif);
}

} // namespace

QByteArray BoxBytes::box(const QByteArray &type, const QByteArray &content)
{
    return big(8 + content.size(), 4) + type + content;
}

QByteArray BoxBytes::fullBox(const QByteArray &type, int version, quint32 flags,
                             const QByteArray &content)
{
    return box(type, big(version, 1) + big(flags, 3) + content);
}

QByteArray BoxBytes::sizeProperty(QSize size)
{
    return fullBox("ispe", 0, 0, big(size.width(), 4) + big(size.height(), 4));
}

QByteArray BoxBytes::turnProperty(int quarters)
{
    return box("irot", big(quarters, 1));
}

QByteArray BoxBytes::mirrorProperty(int axis)
{
    return box("imir", big(axis, 1));
}

QByteArray BoxBytes::associations(quint16 item, const QList<int> &properties)
{
    auto content = big(1, 4) + big(item, 2) + big(properties.size(), 1);
    for (const int property : properties) {
        content += big(property, 1);
    }
    return fullBox("ipma", 0, 0, content);
}

QByteArray BoxBytes::heif(const Heif &parts)
{
    const auto type = box("ftyp", "heic" + big(0, 4) + "mif1heic");
    const auto handler =
        fullBox("hdlr", 0, 0, big(0, 4) + "pict" + QByteArray(12, '\0') + QByteArray(1, '\0'));
    const auto primary = fullBox("pitm", 0, 0, big(Heif::pictureItem, 2));
    const auto items = fullBox("iinf", 0, 0,
                               big(2, 2) + itemEntry(Heif::pictureItem, "hvc1") +
                                   itemEntry(Heif::exifItem, "Exif"));
    const auto properties = box("iprp", box("ipco", parts.properties.join()) + parts.associations);
    // The block begins with the distance to the TIFF header.
    const auto content = parts.exif.isEmpty() ? QByteArray() : big(0, 4) + parts.exif;
    const auto head = [&](qint64 exifAt) {
        const auto places =
            parts.locations.isEmpty() ? itemLocations(exifAt, content.size()) : parts.locations;
        return type + fullBox("meta", 0, 0, handler + primary + items + places + properties);
    };
    return head(head(0).size() + 8) + box("mdat", content);
}

QByteArray BoxBytes::cr3(const QByteArray &main, const QByteArray &exif,
                         const Cr3Pictures &pictures)
{
    const auto canon = QByteArray::fromHex("85c0b687820f11e08111f4ce462b6a48");
    const auto previewType = QByteArray::fromHex("eaf42b5e1c984b88b9fbb7dc406e4d16");
    const auto withHeader = [](const QByteArray &stream) { return QByteArray(16, '\0') + stream; };
    const auto settings =
        box("CMT1", main) + box("CMT2", exif) +
        (pictures.thumbnail.isEmpty() ? QByteArray() : box("THMB", withHeader(pictures.thumbnail)));
    const QByteArray sensorData(64, '\x33');
    const auto before = [&](qsizetype at) {
        const auto track = [](qsizetype offset, qsizetype size) {
            const auto table =
                fullBox("stsz", 0, 0, big(0, 4) + big(1, 4) + big(static_cast<quint64>(size), 4)) +
                fullBox("co64", 0, 0, big(1, 4) + big(static_cast<quint64>(offset), 8));
            return box("trak", box("mdia", box("minf", box("stbl", table))));
        };
        return box("ftyp", "crx " + big(1, 4) + "crx isom") +
               box("moov", box("uuid", canon + settings) + track(at, pictures.whole.size()) +
                               track(at + pictures.whole.size(), sensorData.size())) +
               box("uuid",
                   previewType + big(1, 8) +
                       (pictures.preview.isEmpty() ? QByteArray()
                                                   : box("PRVW", withHeader(pictures.preview))));
    };
    constexpr qsizetype headerLength = 8;
    return before(before(0).size() + headerLength) + box("mdat", pictures.whole + sensorData);
}
