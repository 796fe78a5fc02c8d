// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/Cr3Pictures.h"

#include "platform/imageio/BoxReader.h"

#include <QtEndian>

#include <algorithm>

namespace {

/// In "THMB" and "PRVW" the stream stands behind version, size and length.
constexpr qint64 headerOfPicture = 16;

ByteRange behindHeader(ByteRange content)
{
    return {content.offset + headerOfPicture,
            std::max<qint64>(content.length - headerOfPicture, 0)};
}

/// The table of a track's samples, by way of the boxes around it.
std::optional<ByteRange> sampleTable(PagedReader &reader, ByteRange track)
{
    auto inner = track;
    for (const auto *type : {"mdia", "minf", "stbl"}) {
        const auto box = BoxReader::find(BoxReader::boxes(reader, inner), type);
        if (!box) {
            return std::nullopt;
        }
        inner = box->content;
    }
    return inner;
}

std::optional<ByteRange> firstSample(PagedReader &reader, ByteRange track)
{
    const auto table = sampleTable(reader, track);
    const auto boxes = table ? BoxReader::boxes(reader, *table) : QList<BoxReader::Box>();
    const auto sizes = BoxReader::find(boxes, "stsz");
    const auto offsets = BoxReader::find(boxes, "co64");
    if (!sizes || !offsets) {
        return std::nullopt;
    }
    // ISO 14496-12, 8.7.3.2 and 8.7.5.2: a size for all, how many there are, the size of each.
    const auto common = reader.bytes(sizes->content.offset + 4, 4);
    const auto own = reader.bytes(sizes->content.offset + 12, 4);
    const auto offset = reader.bytes(offsets->content.offset + 8, 8);
    if (common.isEmpty() || offset.isEmpty()) {
        return std::nullopt;
    }
    const auto size = qFromBigEndian<quint32>(common.constData());
    const auto ownSize = own.isEmpty() ? 0U : qFromBigEndian<quint32>(own.constData());
    return ByteRange{qFromBigEndian<qint64>(offset.constData()), size > 0 ? size : ownSize};
}

} // namespace

QList<ByteRange> Cr3Pictures::find(PagedReader &reader)
{
    static const auto settings = QByteArray::fromHex("85c0b687820f11e08111f4ce462b6a48");
    static const auto preview = QByteArray::fromHex("eaf42b5e1c984b88b9fbb7dc406e4d16");
    constexpr qint64 countBeforePreview = 8;
    QList<ByteRange> result;
    const auto boxes = BoxReader::boxes(reader, {0, reader.size()});
    const auto addIn = [&](ByteRange range, const char *type) {
        if (const auto box = BoxReader::find(BoxReader::boxes(reader, range), type)) {
            result.append(behindHeader(box->content));
        }
    };
    for (const auto &box : boxes) {
        if (box.uuid == preview) {
            addIn(
                {box.content.offset + countBeforePreview, box.content.length - countBeforePreview},
                "PRVW");
        }
    }
    const auto movie = BoxReader::find(boxes, "moov");
    const auto inMovie = movie ? BoxReader::boxes(reader, movie->content) : QList<BoxReader::Box>();
    for (const auto &box : inMovie) {
        if (box.uuid == settings) {
            addIn(box.content, "THMB");
        } else if (box.type == "trak") {
            if (const auto sample = firstSample(reader, box.content)) {
                result.append(*sample);
            }
        }
    }
    return result;
}
