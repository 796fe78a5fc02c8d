// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/BigTiffBytes.h"

using PictureBytes::Field;
using PictureBytes::number;
using PictureBytes::Order;

/// A directory that begins at @p offset, its values behind it.
static QByteArray directory(const QList<Field> &fields, quint64 offset, Order order)
{
    const auto count = static_cast<quint64>(fields.size());
    auto valueAt = offset + 8 + 20 * count + 8;
    auto entries = number(count, 8, order);
    QByteArray values;
    for (const auto &field : fields) {
        entries += number(field.tag, 2, order) + number(field.type, 2, order) +
                   number(field.count, 8, order);
        if (field.value.size() <= 8) {
            entries += field.value.leftJustified(8, '\0');
        } else {
            entries += number(valueAt, 8, order);
            values += field.value;
            valueAt += static_cast<quint64>(field.value.size());
        }
    }
    return entries + number(0, 8, order) + values;
}

Field BigTiffBytes::wide(quint16 tag, quint64 value, Order order)
{
    return {tag, 16, 1, number(value, 8, order)};
}

QByteArray BigTiffBytes::bigTiff(QList<Field> main, const QList<Field> &exif, Order order)
{
    constexpr quint64 first = 16;
    main.append(wide(0x8769, 0, order));
    const auto exifAt = first + static_cast<quint64>(directory(main, first, order).size());
    main.last() = wide(0x8769, exifAt, order);
    return (order == Order::Little ? QByteArray("II") : QByteArray("MM")) + number(43, 2, order) +
           number(8, 2, order) + number(0, 2, order) + number(first, 8, order) +
           directory(main, first, order) + directory(exif, exifAt, order);
}
