// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/DngWriter.h"

#include "demo/card/ExifWriter.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace DngWriter {

constexpr int indexWidth = 256;

// Eight bits on the sRGB curve (IEC 61966-2-1); the table takes them back to linear light, so that
// developing the file gives the picture again.
static QList<quint16> linearization()
{
    QList<quint16> table;
    for (int i = 0; i < 256; ++i) {
        const double v = i / 255.0;
        const double linear = v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
        table.append(static_cast<quint16>(std::lround(linear * 65535)));
    }
    return table;
}

// One value per pixel, red and green in even rows, green and blue in odd ones.
static QByteArray mosaic(const QImage &picture)
{
    QByteArray values(static_cast<qsizetype>(picture.width()) * picture.height(),
                      Qt::Uninitialized);
    char *out = values.data();
    for (int y = 0; y < picture.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const int green = (x + y) % 2;
            const int value = green ? qGreen(line[x]) : y % 2 ? qBlue(line[x]) : qRed(line[x]);
            *out++ = static_cast<char>(value);
        }
    }
    return values;
}

static QByteArray rgbRows(const QImage &picture)
{
    const QImage rgb = picture.convertToFormat(QImage::Format_RGB888);
    QByteArray rows;
    for (int y = 0; y < rgb.height(); ++y) {
        rows.append(reinterpret_cast<const char *>(rgb.constScanLine(y)), rgb.width() * 3);
    }
    return rows;
}

static void describe(TiffDirectory &directory, QSize size, quint32 subfile, quint16 compression,
                     quint16 photometric, const QList<quint16> &bits)
{
    directory.setLongs(0x00FE, {subfile});
    directory.setLongs(0x0100, {static_cast<quint32>(size.width())});
    directory.setLongs(0x0101, {static_cast<quint32>(size.height())});
    directory.setShorts(0x0102, bits);
    directory.setShorts(0x0103, {compression});
    directory.setShorts(0x0106, {photometric});
    directory.setShorts(0x0115, {static_cast<quint16>(bits.size())});
    directory.setLongs(0x0116, {static_cast<quint32>(size.height())});
    directory.setShorts(0x011C, {1});
}

static void setStrip(TiffDirectory &directory, const QByteArray &data)
{
    directory.setData(0x0111, data);
    directory.setLongs(0x0117, {static_cast<quint32>(data.size())});
}

QByteArray bytes(const QImage &stored, const QByteArray &preview, const CaptureSettings &settings)
{
    // Numbers of TIFF 6.0 and DNG 1.4.
    constexpr quint16 uncompressed = 1;
    constexpr quint16 jpegCompressed = 7;
    constexpr quint16 photometricRgb = 2;
    constexpr quint16 photometricYCbCr = 6;
    constexpr quint16 photometricFilterArray = 32803;
    constexpr quint32 mainImage = 0;
    constexpr quint32 reducedImage = 1;

    TiffDirectory sensor;
    describe(sensor, stored.size(), mainImage, uncompressed, photometricFilterArray, {8});
    setStrip(sensor, mosaic(stored));
    sensor.setShorts(0x828D, {2, 2});
    sensor.setBytes(0x828E, QByteArray("\0\1\1\2", 4));
    sensor.setBytes(0xC616, QByteArray("\0\1\2", 3));
    sensor.setShorts(0xC617, {1});
    sensor.setShorts(0xC618, linearization());
    sensor.setShorts(0xC619, {1, 1});
    sensor.setRationals(0xC61A, {{0, 1}});
    sensor.setLongs(0xC61D, {65535});
    sensor.setRationals(0xC61E, {{1, 1}, {1, 1}});
    sensor.setLongs(0xC61F, {0, 0});
    sensor.setLongs(0xC620,
                    {static_cast<quint32>(stored.width()), static_cast<quint32>(stored.height())});

    TiffDirectory full;
    describe(full, stored.size(), reducedImage, jpegCompressed, photometricYCbCr, {8, 8, 8});
    setStrip(full, preview);
    full.setLongs(0xC71A, {1}); // the preview is sRGB

    const QImage index = stored.scaledToWidth(indexWidth, Qt::SmoothTransformation);
    auto main = ExifWriter::mainDirectory(settings);
    describe(main, index.size(), reducedImage, uncompressed, photometricRgb, {8, 8, 8});
    setStrip(main, rgbRows(index));
    main.setDirectories(0x014A, {sensor, full});
    main.setDirectories(0x8769, {ExifWriter::exifDirectory(settings, stored.size())});
    main.setBytes(0xC612, QByteArray("\1\4\0\0", 4));
    main.setBytes(0xC613, QByteArray("\1\1\0\0", 4));
    main.setAscii(0xC614, "Fujifilm X-T5"_ba);
    // XYZ to the camera's colours under D65: the camera sees linear sRGB (IEC 61966-2-1).
    main.setSignedRationals(0xC621, {{32406, 10000},
                                     {-15372, 10000},
                                     {-4986, 10000},
                                     {-9689, 10000},
                                     {18758, 10000},
                                     {415, 10000},
                                     {557, 10000},
                                     {-2040, 10000},
                                     {10570, 10000}});
    main.setRationals(0xC628, {{1, 1}, {1, 1}, {1, 1}});
    main.setSignedRationals(0xC62A, {{0, 1}});
    main.setShorts(0xC65A, {21});
    return TiffDirectory::file({main});
}

} // namespace DngWriter
