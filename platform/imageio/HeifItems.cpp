// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/HeifItems.h"

#include "platform/imageio/BoxReader.h"
#include "platform/imageio/ByteCursor.h"
#include "platform/imageio/Orientation.h"

#include <QtEndian>

#include <algorithm>

namespace {

using Boxes = QList<BoxReader::Box>;

/// The largest boxes list the tiles of a picture, some ten bytes each.
constexpr qint64 largestBox = 256 * 1024;

struct FullBox {
    int version = 0;
    quint32 flags = 0;
    ByteCursor content;
};

/// At most @p length bytes of it, when no more are of interest.
FullBox fullBox(PagedReader &reader, const BoxReader::Box &box, qint64 length = largestBox)
{
    ByteCursor content(reader.bytes(box.content.offset, std::min(box.content.length, length)));
    const auto version = static_cast<int>(content.take(1));
    const auto flags = static_cast<quint32>(content.take(3));
    return {version, flags, content};
}

/// The boxes inside a box, after @p skipped bytes.
Boxes inside(PagedReader &reader, const BoxReader::Box &box, qint64 skipped = 0)
{
    const auto length = std::max<qint64>(box.content.length - skipped, 0);
    return BoxReader::boxes(reader, {box.content.offset + skipped, length});
}

std::optional<quint64> primaryItem(PagedReader &reader, const Boxes &meta)
{
    const auto box = BoxReader::find(meta, "pitm");
    if (!box) {
        return std::nullopt;
    }
    auto [version, flags, content] = fullBox(reader, *box);
    const auto item = content.take(version == 0 ? 2 : 4);
    return content.failed() ? std::nullopt : std::optional(item);
}

/// The numbers, counted from 1, of the properties of @p item, in their order; nothing when the box
/// does not name the item.
std::optional<QList<qsizetype>> propertyNumbers(PagedReader &reader, const BoxReader::Box &box,
                                                quint64 item)
{
    auto [version, flags, content] = fullBox(reader, box);
    const auto itemCount = content.take(4);
    for (quint64 index = 0; index < itemCount && !content.failed(); ++index) {
        const auto id = content.take(version == 0 ? 2 : 4);
        const auto propertyCount = content.take(1);
        QList<qsizetype> numbers;
        for (quint64 property = 0; property < propertyCount && !content.failed(); ++property) {
            const auto mask = (flags & 1) != 0 ? 0x7fff : 0x7f; // without the bit "essential"
            numbers.append(static_cast<qsizetype>(content.take((flags & 1) != 0 ? 2 : 1)) & mask);
        }
        if (id == item) {
            return numbers;
        }
    }
    return std::nullopt;
}

void applyProperty(HeifItems &items, PagedReader &reader, const BoxReader::Box &box)
{
    if (box.type == "ispe") {
        constexpr qint64 wholeLength = 12;
        auto [version, flags, content] = fullBox(reader, box, wholeLength);
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

void readProperties(HeifItems &items, PagedReader &reader, const Boxes &meta, quint64 item)
{
    const auto properties = BoxReader::find(meta, "iprp");
    if (!properties) {
        return;
    }
    const auto boxes = inside(reader, *properties);
    const auto container = BoxReader::find(boxes, "ipco");
    if (!container) {
        return;
    }
    const auto all = inside(reader, *container);
    for (const auto &box : boxes) {
        if (box.type != "ipma") {
            continue;
        }
        const auto numbers = propertyNumbers(reader, box, item);
        if (!numbers) {
            continue;
        }
        for (const auto number : *numbers) {
            if (number >= 1 && number <= all.size()) {
                applyProperty(items, reader, all.at(number - 1));
            }
        }
        return; // the standard allows one box to name an item
    }
}

std::optional<quint64> exifItem(PagedReader &reader, const Boxes &meta)
{
    const auto box = BoxReader::find(meta, "iinf");
    if (!box) {
        return std::nullopt;
    }
    const auto version = reader.bytes(box->content.offset, 1);
    if (version.isEmpty()) {
        return std::nullopt;
    }
    const auto entries = inside(reader, *box, version.at(0) == 0 ? 6 : 8);
    for (const auto &entry : entries) {
        constexpr qint64 typeEnd = 14;
        auto [entryVersion, flags, content] = fullBox(reader, entry, typeEnd);
        if (entry.type != "infe" || entryVersion < 2) {
            continue;
        }
        const auto id = content.take(entryVersion == 2 ? 2 : 4);
        content.skip(2);
        constexpr quint64 exifType = 0x45786966; // "Exif"
        if (content.take(4) == exifType) {
            return id;
        }
    }
    return std::nullopt;
}

/// The first extent of @p item; metadata is not scattered.
std::optional<ByteRange> location(PagedReader &reader, const Boxes &meta, quint64 item)
{
    const auto box = BoxReader::find(meta, "iloc");
    if (!box) {
        return std::nullopt;
    }
    auto [version, flags, content] = fullBox(reader, *box);
    const auto sizes = content.take(2);
    const int offsetSize = sizes >> 12 & 0xf;
    const int lengthSize = sizes >> 8 & 0xf;
    const int baseSize = sizes >> 4 & 0xf;
    const int indexSize = version > 0 ? static_cast<int>(sizes & 0xf) : 0;
    if (std::max({offsetSize, lengthSize, baseSize, indexSize}) > 8) {
        return std::nullopt;
    }
    const auto count = content.take(version < 2 ? 2 : 4);
    for (quint64 index = 0; index < count && !content.failed(); ++index) {
        const auto id = content.take(version < 2 ? 2 : 4);
        const auto method = version > 0 ? content.take(2) & 0xf : 0;
        content.skip(2);
        const auto base = content.take(baseSize);
        const auto extents = static_cast<qsizetype>(content.take(2));
        if (id != item) {
            content.skip(extents * (indexSize + offsetSize + lengthSize));
            continue;
        }
        content.skip(indexSize);
        const auto offset = static_cast<qint64>(base + content.take(offsetSize));
        const auto length = static_cast<qint64>(content.take(lengthSize));
        const auto data = BoxReader::find(meta, "idat");
        const bool inItemData = method == 1 && data;
        if (extents == 0 || content.failed() || offset < 0 || length < 0 || method > 1 ||
            (method == 1 && !data)) {
            return std::nullopt;
        }
        const auto from = inItemData ? data->content.offset : 0;
        if (offset > reader.size() - from) {
            return std::nullopt;
        }
        return ByteRange{from + offset, std::min(length, reader.size() - from - offset)};
    }
    return std::nullopt;
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
    const auto meta = BoxReader::find(BoxReader::boxes(reader, {0, reader.size()}), "meta");
    if (!meta) {
        return std::nullopt;
    }
    const auto boxes = inside(reader, *meta, 4);
    const auto item = primaryItem(reader, boxes);
    if (!item) {
        return std::nullopt;
    }
    HeifItems items;
    readProperties(items, reader, boxes, *item);
    items.exif = exifBlock(reader, boxes);
    return items;
}
