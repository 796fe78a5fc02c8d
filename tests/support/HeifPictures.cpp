// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/HeifPictures.h"

#include "tests/support/BoxBytes.h"
#include "tests/support/HevcEncoder.h"

#include <cstdlib>

using BoxBytes::sizeProperty;
using HeifBytes::Item;

bool HeifPictures::canEncode()
{
    return !HevcEncoder::encode(plain({64, 64}, red)).data.isEmpty();
}

QImage HeifPictures::plain(QSize size, QRgb colour)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

bool HeifPictures::isClose(QRgb one, QRgb other, int tolerance)
{
    return std::abs(qRed(one) - qRed(other)) <= tolerance &&
           std::abs(qGreen(one) - qGreen(other)) <= tolerance &&
           std::abs(qBlue(one) - qBlue(other)) <= tolerance;
}

Item HeifPictures::coded(quint16 id, const QImage &image, const QList<QByteArray> &properties,
                         const char *chroma, int bits)
{
    const auto stream = HevcEncoder::encode(image, chroma, bits);
    return {.id = id,
            .type = "hvc1",
            .properties = QList{sizeProperty(image.size()), stream.configuration} + properties,
            .data = stream.data};
}

QList<Item> HeifPictures::tiled(int columns, const QList<QRgb> &colours, QSize tile, QSize size)
{
    const int rows = static_cast<int>(colours.size()) / columns;
    Item grid{.id = main,
              .type = "grid",
              .properties = {sizeProperty(size)},
              .data = HeifBytes::gridData(columns, rows, size),
              .references = {{"dimg", {}}}};
    QList<Item> items;
    for (const auto colour : colours) {
        const auto id = static_cast<quint16>(100 + items.size());
        items.append(coded(id, plain(tile, colour)));
        grid.references.first().to.append(id);
    }
    items.prepend(grid);
    return items;
}
