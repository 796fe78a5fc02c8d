// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/DngBytes.h"

#include "tests/support/PictureBytes.h"

#include <algorithm>
#include <cmath>

using namespace PictureBytes;

namespace {

constexpr int black = 512;
constexpr int white = 15512;

Field bytes(quint16 tag, const QByteArray &value)
{
    return {tag, 1, static_cast<quint32>(value.size()), value};
}

Field fractions(quint16 tag, quint16 type, const QList<double> &values)
{
    constexpr int unit = 10000;
    Field field = {tag, type, static_cast<quint32>(values.size()), {}};
    for (const auto value : values) {
        field.value +=
            number(static_cast<quint64>(std::llround(value * unit)), 4) + number(unit, 4);
    }
    return field;
}

QByteArray cells(DngBytes::Pattern pattern)
{
    return pattern == DngBytes::Pattern::Bayer
               ? QByteArray::fromHex("00010102")
               : QByteArray::fromHex("010201010001000100020102010201010001"
                                     "010001010201020102000100010001010201");
}

QByteArray sensorData(const DngBytes::Dng &parts)
{
    const auto pattern = cells(parts.pattern);
    const int edge = parts.pattern == DngBytes::Pattern::Bayer ? 2 : 6;
    QByteArray result;
    for (int y = 0; y < parts.size.height(); ++y) {
        for (int x = 0; x < parts.size.width(); ++x) {
            const int color = pattern.at(y % edge * edge + x % edge);
            const double light = std::clamp(parts.light({x, y}, color), 0.0, 1.0);
            result += number(static_cast<quint64>(std::lround(black + light * (white - black))), 2);
        }
    }
    return result;
}

QByteArray pixels(const QImage &image)
{
    QByteArray result;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto pixel = image.pixel(x, y);
            for (const int value : {qRed(pixel), qGreen(pixel), qBlue(pixel)}) {
                result += static_cast<char>(value);
            }
        }
    }
    return result;
}

/// A reduced picture whose data is at @p at.
QList<Field> reduced(QSize size, quint16 compression, quint16 photometric, quint32 at,
                     qsizetype length)
{
    return {longs(0xfe, {1}),
            longs(0x100, {size.width()}),
            longs(0x101, {size.height()}),
            shorts(0x102, {8, 8, 8}),
            shorts(0x103, {compression}),
            shorts(0x106, {photometric}),
            longs(0x111, {static_cast<qint32>(at)}),
            shorts(0x115, {3}),
            longs(0x116, {size.height()}),
            longs(0x117, {static_cast<qint32>(length)})};
}

} // namespace

QByteArray DngBytes::dng(const Dng &parts)
{
    auto file = "II" + number(42, 2) + number(0, 4);
    const auto append = [&](const QByteArray &content) {
        const auto at = static_cast<quint32>(file.size());
        file += content;
        file += QByteArray(file.size() % 2, '\0');
        return at;
    };
    const auto end = [&] { return static_cast<quint32>(file.size()); };

    QList<qint32> below;
    if (!parts.preview.isEmpty()) {
        const auto size = QImage::fromData(parts.preview).size();
        const auto at = append(parts.preview);
        below.append(static_cast<qint32>(
            append(directory(reduced(size, 7, 6, at, parts.preview.size()), end(), 0))));
    }
    if (!parts.bitmap.isNull()) {
        const auto data = pixels(parts.bitmap);
        const auto at = append(data);
        below.append(static_cast<qint32>(
            append(directory(reduced(parts.bitmap.size(), 1, 2, at, data.size()), end(), 0))));
    }
    qint32 exifAt = 0;
    if (parts.saysAdobeRgb) {
        const auto interoperability = append(directory({text(0x0001, "R03")}, end(), 0));
        exifAt = static_cast<qint32>(append(directory(
            {shorts(0xa001, {0xffff}), longs(0xa005, {static_cast<qint32>(interoperability)})},
            end(), 0)));
    }

    const auto data = sensorData(parts);
    const auto dataAt = append(data);
    const auto edge = static_cast<quint16>(parts.pattern == Pattern::Bayer ? 2 : 6);
    QList<Field> main = {
        longs(0xfe, {0}),
        longs(0x100, {parts.size.width()}),
        longs(0x101, {parts.size.height()}),
        shorts(0x102, {16}),
        shorts(0x103, {1}),
        shorts(0x106, {32803}),
        text(0x10f, "Kestle"),
        text(0x110, "Test"),
        longs(0x111, {static_cast<qint32>(dataAt)}),
        shorts(0x112, {parts.orientation}),
        shorts(0x115, {1}),
        longs(0x116, {parts.size.height()}),
        longs(0x117, {static_cast<qint32>(data.size())}),
    };
    if (!below.isEmpty()) {
        main.append(longs(0x14a, below));
    }
    main += {
        shorts(0x828d, {edge, edge}),
        bytes(0x828e, cells(parts.pattern)),
    };
    if (exifAt > 0) {
        main.append(longs(0x8769, {exifAt}));
    }
    main += {
        bytes(0xc612, QByteArray("\1\4\0\0", 4)), bytes(0xc616, QByteArray("\0\1\2", 3)),
        shorts(0xc617, {1}), longs(0xc61a, {black}), longs(0xc61d, {white}),
        // From CIE XYZ to sRGB's primaries.
        fractions(0xc621, 10,
                  {3.2404, -1.5371, -0.4985, -0.9692, 1.8760, 0.0415, 0.0556, -0.2040, 1.0572}),
        fractions(0xc628, 5, {parts.neutral[0], parts.neutral[1], parts.neutral[2]}),
        shorts(0xc65a, {21}), // D65
    };
    const auto mainAt = append(directory(main, end(), 0));
    file.replace(4, 4, number(mainAt, 4));
    return file;
}
