// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/HeifBytes.h"

#include "tests/support/BoxBytes.h"
#include "tests/support/PictureBytes.h"

#include <algorithm>

using BoxBytes::box;
using BoxBytes::fullBox;

namespace {

QByteArray big(qint64 value, int size)
{
    return PictureBytes::number(static_cast<quint64>(value), size, PictureBytes::Order::Big);
}

QByteArray entries(const QList<HeifBytes::Item> &items)
{
    auto content = big(items.size(), 2);
    for (const auto &item : items) {
        content += fullBox("infe", 2, 0, big(item.id, 2) + big(0, 2) + item.type + '\0');
    }
    return fullBox("iinf", 0, 0, content);
}

QByteArray locations(const QList<HeifBytes::Item> &items, qint64 dataAt)
{
    auto content = big(0x4400, 2) + big(items.size(), 2);
    for (const auto &item : items) {
        content +=
            big(item.id, 2) + big(0, 2) + big(1, 2) + big(dataAt, 4) + big(item.data.size(), 4);
        dataAt += item.data.size();
    }
    return fullBox("iloc", 0, 0, content);
}

QByteArray references(const QList<HeifBytes::Item> &items)
{
    QByteArray content;
    for (const auto &item : items) {
        for (const auto &reference : item.references) {
            auto one = big(item.id, 2) + big(reference.to.size(), 2);
            for (const auto to : reference.to) {
                one += big(to, 2);
            }
            content += box(reference.type, one);
        }
    }
    return fullBox("iref", 0, 0, content);
}

/// Each item has its own ones.
QByteArray properties(const QList<HeifBytes::Item> &items)
{
    QByteArray all;
    auto associations = big(items.size(), 4);
    int number = 0;
    for (const auto &item : items) {
        associations += big(item.id, 2) + big(item.properties.size(), 1);
        for (const auto &property : item.properties) {
            all += property;
            associations += big(++number, 2);
        }
    }
    constexpr quint32 wideNumbers = 1;
    return box("iprp", box("ipco", all) + fullBox("ipma", 0, wideNumbers, associations));
}

} // namespace

QByteArray HeifBytes::file(quint16 primary, const QList<Item> &items)
{
    const auto type = box("ftyp", "heic" + big(0, 4) + "mif1heic");
    const auto handler = fullBox("hdlr", 0, 0, big(0, 4) + "pict" + QByteArray(13, '\0'));
    const auto head = [&](qint64 dataAt) {
        return type + fullBox("meta", 0, 0,
                              handler + fullBox("pitm", 0, 0, big(primary, 2)) + entries(items) +
                                  locations(items, dataAt) + references(items) + properties(items));
    };
    QByteArray data;
    for (const auto &item : items) {
        data += item.data;
    }
    return head(head(0).size() + 8) + box("mdat", data);
}

QByteArray HeifBytes::cropProperty(QSize size, QPoint doubledOffset)
{
    return box("clap", big(size.width(), 4) + big(1, 4) + big(size.height(), 4) + big(1, 4) +
                           big(doubledOffset.x(), 4) + big(2, 4) + big(doubledOffset.y(), 4) +
                           big(2, 4));
}

QByteArray HeifBytes::colorProperty(int primaries, int transfer, int matrix, bool fullRange)
{
    return box("colr", "nclx" + big(primaries, 2) + big(transfer, 2) + big(matrix, 2) +
                           big(fullRange ? 0x80 : 0, 1));
}

QByteArray HeifBytes::profileProperty(const QByteArray &icc)
{
    return box("colr", "prof" + icc);
}

QByteArray HeifBytes::purposeProperty(const QByteArray &name)
{
    return fullBox("auxC", 0, 0, name + '\0');
}

QByteArray HeifBytes::gridData(int columns, int rows, QSize size)
{
    return big(1, 2) + big(rows - 1, 1) + big(columns - 1, 1) + big(size.width(), 4) +
           big(size.height(), 4);
}

QByteArray HeifBytes::overlayData(QSize size, const QList<QPoint> &corners)
{
    auto data = big(0, 2) + big(0xffff, 2) + big(0, 2) + big(0, 2) + big(0xffff, 2) +
                big(size.width(), 2) + big(size.height(), 2);
    for (const auto corner : corners) {
        data += big(corner.x(), 2) + big(corner.y(), 2);
    }
    return data;
}
