// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/PictureBytes.h"

#include <QBuffer>
#include <QFile>
#include <QPainter>
#include <QTest>

namespace {

using PictureBytes::Field;
using PictureBytes::Order;

template<typename T>
Field numbers(quint16 tag, quint16 type, const QList<T> &values, Order order)
{
    Field field = {tag, type, static_cast<quint32>(values.size()), {}};
    for (const auto value : values) {
        field.value += PictureBytes::number(static_cast<quint64>(value), sizeof(T), order);
    }
    return field;
}

} // namespace

QByteArray PictureBytes::number(quint64 value, int size, Order order)
{
    QByteArray bytes;
    for (int index = 0; index < size; ++index) {
        const auto byte = static_cast<char>(value >> (8 * index));
        order == Order::Little ? bytes.append(byte) : bytes.prepend(byte);
    }
    return bytes;
}

Field PictureBytes::text(quint16 tag, const QByteArray &value)
{
    return {tag, 2, static_cast<quint32>(value.size() + 1), value + '\0'};
}

Field PictureBytes::shorts(quint16 tag, const QList<quint16> &values, Order order)
{
    return numbers(tag, 3, values, order);
}

Field PictureBytes::longs(quint16 tag, const QList<qint32> &values, Order order)
{
    return numbers(tag, 4, values, order);
}

Field PictureBytes::signedLongs(quint16 tag, const QList<qint32> &values)
{
    return numbers(tag, 9, values, Order::Little);
}

Field PictureBytes::fraction(quint16 tag, quint32 numerator, quint32 denominator, Order order)
{
    return {tag, 5, 1, number(numerator, 4, order) + number(denominator, 4, order)};
}

Field PictureBytes::opaque(quint16 tag, const QByteArray &value)
{
    return {tag, 7, static_cast<quint32>(value.size()), value};
}

QByteArray PictureBytes::directory(const QList<Field> &fields, quint32 offset, quint32 next,
                                   Order order)
{
    auto valueAt = offset + 2 + 12 * static_cast<quint32>(fields.size()) + 4;
    QByteArray entries = number(static_cast<quint64>(fields.size()), 2, order);
    QByteArray values;
    for (const auto &field : fields) {
        entries += number(field.tag, 2, order) + number(field.type, 2, order) +
                   number(field.count, 4, order);
        if (field.value.size() <= 4) {
            entries += field.value.leftJustified(4, '\0');
        } else {
            entries += number(valueAt, 4, order);
            values += field.value;
            valueAt += static_cast<quint32>(field.value.size());
        }
    }
    return entries + number(next, 4, order) + values;
}

QByteArray PictureBytes::exifBlock(QList<Field> main, const QList<Field> &exif,
                                   const QByteArray &thumbnail, Order order)
{
    constexpr quint32 first = 8;
    if (!exif.isEmpty()) {
        main.append(longs(0x8769, {0}, order));
    }
    const auto exifAt = first + static_cast<quint32>(directory(main, first, 0, order).size());
    const auto exifBytes = exif.isEmpty() ? QByteArray() : directory(exif, exifAt, 0, order);
    const auto secondAt = exifAt + static_cast<quint32>(exifBytes.size());
    constexpr quint32 secondSize = 2 + 2 * 12 + 4;
    const QList<Field> second = {
        longs(0x0201, {static_cast<qint32>(secondAt + secondSize)}, order),
        longs(0x0202, {static_cast<qint32>(thumbnail.size())}, order),
    };
    if (!exif.isEmpty()) {
        main.last() = longs(0x8769, {static_cast<qint32>(exifAt)}, order);
    }
    auto block = (order == Order::Little ? QByteArray("II") : QByteArray("MM")) +
                 number(42, 2, order) + number(first, 4, order) +
                 directory(main, first, thumbnail.isEmpty() ? 0 : secondAt, order) + exifBytes;
    if (!thumbnail.isEmpty()) {
        block += directory(second, secondAt, 0, order) + thumbnail;
    }
    return block;
}

QByteArray PictureBytes::fujiNote(const QList<Field> &fields)
{
    return "FUJIFILM" + number(12, 4) + directory(fields, 12, 0);
}

QByteArray PictureBytes::jpeg(const QImage &image, int quality)
{
    QBuffer buffer;
    image.save(&buffer, "JPEG", quality);
    return buffer.data();
}

QByteArray PictureBytes::withSegment(const QByteArray &stream, uchar marker,
                                     const QByteArray &content)
{
    auto result = stream;
    const auto length = static_cast<quint64>(content.size() + 2);
    result.insert(2, "\xff" + QByteArray(1, static_cast<char>(marker)) +
                         number(length, 2, Order::Big) + content);
    return result;
}

QByteArray PictureBytes::withExif(const QByteArray &stream, const QByteArray &block)
{
    return withSegment(stream, 0xe1, QByteArray("Exif\0\0", 6) + block);
}

QByteArray PictureBytes::raf(const QByteArray &stream, QSize sensor)
{
    constexpr quint32 jpegAt = 148;
    const auto big = [](quint64 value, int size) { return number(value, size, Order::Big); };
    const auto records = big(1, 4) + big(0x0111, 2) + big(4, 2) +
                         big(static_cast<quint64>(sensor.height()), 2) +
                         big(static_cast<quint64>(sensor.width()), 2);
    const auto length = static_cast<quint64>(stream.size());
    auto header = QByteArray("FUJIFILMCCD-RAW 0201FF383601X-T4").leftJustified(84, '\0') +
                  big(jpegAt, 4) + big(length, 4) + big(jpegAt + length, 4) +
                  big(static_cast<quint64>(records.size()), 4);
    return header.leftJustified(jpegAt, '\0') + stream + records;
}

QByteArray PictureBytes::x3f(const QByteArray &stream, QSize sensor, quint16 version)
{
    const auto section = [](quint64 format, const QByteArray &content) {
        return "SECi" + number(0x20000, 4) + number(2, 4) + number(format, 4) +
               QByteArray(12, '\0') + content;
    };
    const auto entry = [](qsizetype offset, qsizetype length, const QByteArray &type) {
        return number(static_cast<quint64>(offset), 4) + number(static_cast<quint64>(length), 4) +
               type;
    };
    auto header = "FOVb" + number(0, 2) + number(version, 2);
    header = header.leftJustified(version >= 4 ? 40 : 28, '\0') +
             number(static_cast<quint64>(sensor.width()), 4) +
             number(static_cast<quint64>(sensor.height()), 4);
    header = header.leftJustified(264, '\0');
    const auto bitmap = section(3, QByteArray(12, '\x7f'));
    const auto picture = section(18, stream);
    const auto pictureAt = header.size() + bitmap.size();
    const auto directoryAt = pictureAt + picture.size();
    return header + bitmap + picture + "SECd" + number(0x20000, 4) + number(3, 4) +
           entry(header.size(), bitmap.size(), "IMAG") +
           entry(header.size(), bitmap.size(), "PROP") + entry(pictureAt, picture.size(), "IMA2") +
           number(static_cast<quint64>(directoryAt), 4);
}

QImage PictureBytes::corners(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    const int x = size.width() / 2;
    const int y = size.height() / 2;
    painter.fillRect(0, 0, x, y, Qt::red);
    painter.fillRect(x, 0, size.width() - x, y, Qt::green);
    painter.fillRect(0, y, x, size.height() - y, Qt::blue);
    painter.fillRect(x, y, size.width() - x, size.height() - y, Qt::white);
    return image;
}

void PictureBytes::write(const std::filesystem::path &path, const QByteArray &bytes)
{
    // Anew: some file systems flush a file that is cut to nothing and written again.
    std::filesystem::remove(path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}
