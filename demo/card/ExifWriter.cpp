// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/ExifWriter.h"

#include <QtEndian>

#include <cmath>

using namespace Qt::StringLiterals;

namespace ExifWriter {

static TiffDirectory::Rational hundredths(double value)
{
    return {static_cast<qint32>(std::lround(value * 100)), 100};
}

// 1/250 s as 1 over 250, half a second and more in tenths.
static TiffDirectory::Rational exposure(double seconds)
{
    if (seconds < 0.4) {
        return {1, static_cast<qint32>(std::lround(1 / seconds))};
    }
    return {static_cast<qint32>(std::lround(seconds * 10)), 10};
}

static QByteArray dateText(const QDateTime &date)
{
    return date.toString(u"yyyy:MM:dd HH:mm:ss"_s).toLatin1();
}

// "FUJIFILM", the place of the directory, the directory; places count from the note's start.
static QByteArray makerNote(const FilmLook &look)
{
    TiffDirectory note;
    note.setUndefined(0x0000, "0130"_ba);
    note.setAscii(0x1000, "FINE   "_ba);
    note.setShorts(0x1003, {look.saturation});
    note.setSignedLongs(0x100A, {look.shiftRed, look.shiftBlue});
    note.setSignedLongs(0x1040, {look.shadowTone});
    note.setSignedLongs(0x1041, {look.highlightTone});
    note.setSignedLongs(0x1047, {look.grainRoughness});
    note.setSignedLongs(0x1048, {look.colorChrome});
    note.setShorts(0x104C, {look.grainSize});
    note.setSignedLongs(0x104E, {look.colorChromeBlue});
    note.setShorts(0x1401, {look.filmMode});
    note.setShorts(0x1402, {static_cast<quint16>(look.dynamicRange == 0 ? 0 : 1)});
    if (look.dynamicRange != 0) {
        note.setShorts(0x1403, {look.dynamicRange});
    }
    return QByteArray("FUJIFILM\x0c\0\0\0", 12) + note.bytes(12);
}

TiffDirectory mainDirectory(const CaptureSettings &settings)
{
    TiffDirectory main;
    main.setAscii(0x010F, "FUJIFILM"_ba);
    main.setAscii(0x0110, "X-T5"_ba);
    main.setShorts(0x0112, {static_cast<quint16>(settings.orientation)});
    main.setRationals(0x011A, {{72, 1}});
    main.setRationals(0x011B, {{72, 1}});
    main.setShorts(0x0128, {2});
    main.setAscii(0x0131, "Digital Camera X-T5 Ver3.01"_ba);
    main.setAscii(0x0132, dateText(settings.captured));
    main.setShorts(0x0213, {2});
    return main;
}

TiffDirectory exifDirectory(const CaptureSettings &settings, QSize size)
{
    TiffDirectory exif;
    exif.setRationals(0x829A, {exposure(settings.exposureTime)});
    exif.setRationals(0x829D, {hundredths(settings.aperture)});
    exif.setShorts(0x8822, {3}); // aperture priority
    exif.setShorts(0x8827, {static_cast<quint16>(settings.iso)});
    exif.setShorts(0x8830, {1});
    exif.setUndefined(0x9000, "0232"_ba);
    exif.setAscii(0x9003, dateText(settings.captured));
    exif.setAscii(0x9004, dateText(settings.captured));
    exif.setUndefined(0x9101, QByteArray("\x01\x02\x03\0", 4));
    exif.setSignedRationals(0x9204, {{0, 100}});
    exif.setShorts(0x9207, {5});
    exif.setShorts(0x9209, {16});
    exif.setRationals(0x920A, {hundredths(settings.focalLength)});
    if (settings.subject) {
        exif.setShorts(0x9214, {static_cast<quint16>(settings.subject->x()),
                                static_cast<quint16>(settings.subject->y()),
                                static_cast<quint16>(size.width() / 12),
                                static_cast<quint16>(size.width() / 12)});
    }
    exif.setUndefined(0x927C, makerNote(settings.look));
    exif.setUndefined(0xA000, "0100"_ba);
    exif.setShorts(0xA001, {1});
    exif.setLongs(0xA002, {static_cast<quint32>(size.width())});
    exif.setLongs(0xA003, {static_cast<quint32>(size.height())});
    exif.setAscii(0xA433, "FUJIFILM"_ba);
    exif.setAscii(0xA434, settings.lens);
    return exif;
}

static TiffDirectory complete(const CaptureSettings &settings, QSize size)
{
    auto main = mainDirectory(settings);
    main.setDirectories(0x8769, {exifDirectory(settings, size)});
    return main;
}

QByteArray structure(const CaptureSettings &settings, QSize size)
{
    return TiffDirectory::file({complete(settings, size)});
}

QByteArray withExif(const QByteArray &jpeg, const QByteArray &thumbnail,
                    const CaptureSettings &settings, QSize size)
{
    TiffDirectory small;
    small.setShorts(0x0103, {6});
    small.setShorts(0x0112, {static_cast<quint16>(settings.orientation)});
    small.setRationals(0x011A, {{72, 1}});
    small.setRationals(0x011B, {{72, 1}});
    small.setShorts(0x0128, {2});
    small.setData(0x0201, thumbnail);
    small.setLongs(0x0202, {static_cast<quint32>(thumbnail.size())});

    const QByteArray body =
        QByteArray("Exif\0\0", 6) + TiffDirectory::file({complete(settings, size), small});
    const auto length = qToBigEndian(static_cast<quint16>(body.size() + 2));
    QByteArray segment("\xFF\xD8\xFF\xE1", 4);
    segment.append(reinterpret_cast<const char *>(&length), sizeof length);
    return segment + body + jpeg.mid(2);
}

} // namespace ExifWriter
