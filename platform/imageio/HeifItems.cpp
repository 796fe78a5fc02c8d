// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/HeifItems.h"

#include "platform/imageio/HeifBoxes.h"
#include "platform/imageio/Orientation.h"

#include <QtEndian>

namespace {

using HeifBoxes::Boxes;

void applyProperty(HeifItems &items, PagedReader &reader, const BoxReader::Box &box)
{
    if (box.type == "ispe") {
        constexpr qint64 wholeLength = 12;
        auto [version, flags, content] = HeifBoxes::fullBox(reader, box, wholeLength);
        const auto width = static_cast<qint64>(content.take(4));
        const auto height = static_cast<qint64>(content.take(4));
        if (!content.failed() && width > 0 && height > 0) {
            items.width = width;
            items.height = height;
        }
        return;
    }
    const auto value = reader.bytes(box.content.offset, 1);
    if (value.isEmpty()) {
        return;
    }
    if (box.type == "irot") {
        const int anticlockwise = value.at(0) & 3;
        items.orientation = Orientation::rotated(items.orientation, 4 - anticlockwise);
    } else if (box.type == "imir") {
        // 1 exchanges left and right, 0 top and bottom; the first edition said it the other way
        // round, and no writer followed it.
        items.orientation = (value.at(0) & 1) != 0
                                ? Orientation::flippedHorizontally(items.orientation)
                                : Orientation::flippedVertically(items.orientation);
    }
}

void readProperties(HeifItems &items, PagedReader &reader, const Boxes &meta, quint32 primary)
{
    const auto properties = HeifBoxes::properties(reader, meta);
    HeifBoxes::forEachAssociation(reader, properties,
                                  [&](quint32 item, const QList<qsizetype> &places) {
                                      if (item != primary) {
                                          return true;
                                      }
                                      for (const auto place : places) {
                                          applyProperty(items, reader, properties.all.at(place));
                                      }
                                      return false; // the standard allows one box to name an item
                                  });
}

std::optional<quint32> exifItem(PagedReader &reader, const Boxes &meta)
{
    std::optional<quint32> found;
    HeifBoxes::forEachItem(reader, meta, [&](quint32 item, const QByteArray &type) {
        if (type == "Exif") {
            found = item;
        }
        return !found;
    });
    return found;
}

/// The first extent of @p wanted; metadata is not scattered.
std::optional<ByteRange> location(PagedReader &reader, const Boxes &meta, quint32 wanted)
{
    std::optional<ByteRange> found;
    HeifBoxes::forEachLocation(reader, meta, [&](quint32 item, const QList<ByteRange> &extents) {
        if (item == wanted && !extents.isEmpty()) {
            found = extents.first();
        }
        return item != wanted;
    });
    return found;
}

/// ISO 23008-12, A.2.1: the item begins with the distance to the TIFF header.
std::optional<ByteRange> exifBlock(PagedReader &reader, const Boxes &meta)
{
    const auto item = exifItem(reader, meta);
    const auto place = item ? location(reader, meta, *item) : std::nullopt;
    const auto head = place ? reader.bytes(place->offset, 4) : QByteArray();
    if (head.isEmpty()) {
        return std::nullopt;
    }
    const qint64 skipped = 4 + qint64{qFromBigEndian<quint32>(head.constData())};
    if (skipped >= place->length) {
        return std::nullopt;
    }
    return ByteRange{place->offset + skipped, place->length - skipped};
}

} // namespace

std::optional<HeifItems> HeifItems::read(PagedReader &reader)
{
    const auto boxes = HeifBoxes::meta(reader);
    const auto item = boxes ? HeifBoxes::primaryItem(reader, *boxes) : std::nullopt;
    if (!item) {
        return std::nullopt;
    }
    HeifItems items;
    readProperties(items, reader, *boxes, *item);
    items.exif = exifBlock(reader, *boxes);
    return items;
}
