// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/HeifBoxes.h"

#include <algorithm>

namespace {

using HeifBoxes::Boxes;

/// The largest boxes list the tiles of a picture, some ten bytes each.
constexpr qint64 largestBox = 256 * 1024;

/// The boxes inside a box, after @p skipped bytes.
Boxes inside(PagedReader &reader, const BoxReader::Box &box, qint64 skipped = 0)
{
    const auto length = std::max<qint64>(box.content.length - skipped, 0);
    return BoxReader::boxes(reader, {box.content.offset + skipped, length});
}

/// How an "iloc" box writes its numbers.
struct LocationSizes {
    int offset = 0;
    int length = 0;
    int base = 0;
    int index = 0;

    [[nodiscard]] bool valid() const { return std::max({offset, length, base, index}) <= 8; }
    [[nodiscard]] int extent() const { return index + offset + length; }
};

/// An extent within @p whole, the file or the item data; nothing when it begins outside.
std::optional<ByteRange> within(ByteRange whole, qint64 offset, qint64 length)
{
    if (offset < 0 || length < 0 || offset > whole.length) {
        return std::nullopt;
    }
    return ByteRange{whole.offset + offset, std::min(length, whole.length - offset)};
}

} // namespace

HeifBoxes::FullBox HeifBoxes::fullBox(PagedReader &reader, const BoxReader::Box &box, qint64 length)
{
    ByteCursor content(reader.bytes(box.content.offset, std::min(box.content.length, length)));
    const auto version = static_cast<int>(content.take(1));
    const auto flags = static_cast<quint32>(content.take(3));
    return {version, flags, content};
}

std::optional<Boxes> HeifBoxes::meta(PagedReader &reader)
{
    const auto box = BoxReader::find(BoxReader::boxes(reader, {0, reader.size()}), "meta");
    return box ? std::optional(inside(reader, *box, 4)) : std::nullopt;
}

std::optional<quint32> HeifBoxes::primaryItem(PagedReader &reader, const Boxes &meta)
{
    const auto box = BoxReader::find(meta, "pitm");
    if (!box) {
        return std::nullopt;
    }
    auto [version, flags, content] = fullBox(reader, *box, largestBox);
    const auto item = static_cast<quint32>(content.take(version == 0 ? 2 : 4));
    return content.failed() ? std::nullopt : std::optional(item);
}

void HeifBoxes::forEachItem(PagedReader &reader, const Boxes &meta,
                            const std::function<bool(quint32, const QByteArray &)> &visit)
{
    const auto box = BoxReader::find(meta, "iinf");
    const auto version = box ? reader.bytes(box->content.offset, 1) : QByteArray();
    if (version.isEmpty()) {
        return;
    }
    const auto entries = inside(reader, *box, version.at(0) == 0 ? 6 : 8);
    for (const auto &entry : entries) {
        constexpr qint64 typeEnd = 14;
        auto [entryVersion, flags, content] = fullBox(reader, entry, typeEnd);
        if (entry.type != "infe" || entryVersion < 2) {
            continue;
        }
        const auto item = static_cast<quint32>(content.take(entryVersion == 2 ? 2 : 4));
        content.skip(2);
        const auto type = content.takeBytes(4);
        if (!content.failed() && !visit(item, type)) {
            return;
        }
    }
}

HeifBoxes::Properties HeifBoxes::properties(PagedReader &reader, const Boxes &meta)
{
    const auto box = BoxReader::find(meta, "iprp");
    if (!box) {
        return {};
    }
    const auto boxes = inside(reader, *box);
    const auto container = BoxReader::find(boxes, "ipco");
    if (!container) {
        return {};
    }
    Properties result{.all = inside(reader, *container), .associations = {}};
    std::ranges::copy_if(boxes, std::back_inserter(result.associations),
                         [](const auto &candidate) { return candidate.type == "ipma"; });
    return result;
}

void HeifBoxes::forEachAssociation(
    PagedReader &reader, const Properties &properties,
    const std::function<bool(quint32, const QList<qsizetype> &)> &visit)
{
    for (const auto &box : properties.associations) {
        auto [version, flags, content] = fullBox(reader, box, largestBox);
        const bool wide = (flags & 1) != 0;
        const auto itemCount = content.take(4);
        for (quint64 index = 0; index < itemCount && !content.failed(); ++index) {
            const auto item = static_cast<quint32>(content.take(version == 0 ? 2 : 4));
            const auto propertyCount = content.take(1);
            QList<qsizetype> places;
            for (quint64 property = 0; property < propertyCount && !content.failed(); ++property) {
                const auto mask = wide ? 0x7fff : 0x7f; // without the bit "essential"
                // They are counted from 1; 0 is none.
                const auto place = (static_cast<qsizetype>(content.take(wide ? 2 : 1)) & mask) - 1;
                if (place >= 0 && place < properties.all.size()) {
                    places.append(place);
                }
            }
            if (!visit(item, places)) {
                return;
            }
        }
    }
}

void HeifBoxes::forEachLocation(PagedReader &reader, const Boxes &meta,
                                const std::function<bool(quint32, const QList<ByteRange> &)> &visit)
{
    const auto box = BoxReader::find(meta, "iloc");
    if (!box) {
        return;
    }
    auto [version, flags, content] = fullBox(reader, *box, largestBox);
    const auto packed = static_cast<int>(content.take(2));
    const LocationSizes sizes = {packed >> 12 & 0xf, packed >> 8 & 0xf, packed >> 4 & 0xf,
                                 version > 0 ? packed & 0xf : 0};
    if (!sizes.valid()) {
        return;
    }
    const auto itemData = BoxReader::find(meta, "idat");
    const auto count = content.take(version < 2 ? 2 : 4);
    for (quint64 index = 0; index < count && !content.failed(); ++index) {
        const auto item = static_cast<quint32>(content.take(version < 2 ? 2 : 4));
        const auto method = version > 0 ? content.take(2) & 0xf : 0;
        content.skip(2); // which file: cameras have but one
        const bool elsewhere = method > 1 || (method == 1 && !itemData);
        const auto whole =
            method == 1 && itemData ? itemData->content : ByteRange{0, reader.size()};
        const auto base = content.take(sizes.base);
        // Extents that take no bytes could be many without an end.
        const auto extentCount = std::min<quint64>(content.take(2), sizes.extent() > 0 ? 65535 : 1);
        QList<ByteRange> extents;
        for (quint64 extent = 0; extent < extentCount && !content.failed(); ++extent) {
            content.take(sizes.index);
            const auto offset = static_cast<qint64>(base + content.take(sizes.offset));
            const auto length = static_cast<qint64>(content.take(sizes.length));
            if (const auto place = within(whole, offset, length)) {
                extents.append(*place);
            }
        }
        if (!elsewhere && !content.failed() && !visit(item, extents)) {
            return;
        }
    }
}

void HeifBoxes::forEachReference(
    PagedReader &reader, const Boxes &meta,
    const std::function<bool(const QByteArray &, quint32, const QList<quint32> &)> &visit)
{
    const auto box = BoxReader::find(meta, "iref");
    const auto version = box ? reader.bytes(box->content.offset, 1) : QByteArray();
    if (version.isEmpty()) {
        return;
    }
    const int idSize = version.at(0) == 0 ? 2 : 4;
    for (const auto &reference : inside(reader, *box, 4)) {
        ByteCursor content(
            reader.bytes(reference.content.offset, std::min(reference.content.length, largestBox)));
        const auto from = static_cast<quint32>(content.take(idSize));
        const auto count = content.take(2);
        QList<quint32> to;
        for (quint64 index = 0; index < count && !content.failed(); ++index) {
            to.append(static_cast<quint32>(content.take(idSize)));
        }
        if (!content.failed() && !visit(reference.type, from, to)) {
            return;
        }
    }
}
