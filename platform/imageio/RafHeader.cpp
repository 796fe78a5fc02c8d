// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/RafHeader.h"

#include "platform/imageio/ByteCursor.h"

#include <QtEndian>

#include <algorithm>

namespace {

constexpr quint16 croppedSize = 0x0111;
constexpr quint16 fullSize = 0x0100;
constexpr quint32 mostRecords = 255;

ByteRange rangeAt(PagedReader &reader, qint64 at)
{
    const auto data = reader.view(at, 8);
    if (data.isEmpty()) {
        return {};
    }
    const qint64 offset = qFromBigEndian<quint32>(data.constData());
    const qint64 length = qFromBigEndian<quint32>(data.constData() + 4);
    return {offset, std::clamp<qint64>(reader.size() - offset, 0, length)};
}

/// The records: tag, size, content; the sizes in pixels are height, width.
void readSensorSize(RafHeader &header, PagedReader &reader, ByteRange records)
{
    const auto head = reader.view(records.offset, 4);
    if (records.length < 4 || head.isEmpty()) {
        return;
    }
    const auto count = std::min(qFromBigEndian<quint32>(head.constData()), mostRecords);
    auto at = records.offset + 4;
    for (quint32 index = 0; index < count; ++index) {
        ByteCursor record(reader.bytes(at, 8));
        const auto tag = record.take(2);
        const auto size = static_cast<qint64>(record.take(2));
        const auto height = static_cast<qint64>(record.take(2));
        const auto width = static_cast<qint64>(record.take(2));
        if (record.failed()) {
            return;
        }
        const bool wanted = tag == croppedSize || (tag == fullSize && !header.width);
        if (wanted && size >= 4) {
            header.height = height;
            header.width = width;
        }
        if (wanted && tag == croppedSize && size >= 4) {
            return; // the rest is far larger, and lies in further pages
        }
        at += 4 + size;
    }
}

} // namespace

std::optional<RafHeader> RafHeader::read(PagedReader &reader)
{
    if (reader.view(0, 15) != "FUJIFILMCCD-RAW") {
        return std::nullopt;
    }
    RafHeader header;
    header.jpeg = rangeAt(reader, 84);
    readSensorSize(header, reader, rangeAt(reader, 92));
    return header;
}
