// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/BoxReader.h"

#include <QtEndian>

#include <algorithm>

/// A picture with one property box per tile has some hundreds.
constexpr qsizetype mostBoxes = 4096;

QList<BoxReader::Box> BoxReader::boxes(PagedReader &reader, ByteRange range)
{
    QList<Box> result;
    auto at = range.offset;
    const auto end = range.offset + std::min(range.length, reader.size() - range.offset);
    while (at + 8 <= end && result.size() < mostBoxes) {
        const auto head = reader.bytes(at, 8);
        if (head.isEmpty()) {
            break;
        }
        qint64 size = qFromBigEndian<quint32>(head.constData());
        qint64 headerSize = 8;
        if (size == 1) {
            const auto large = reader.bytes(at + 8, 8);
            size = large.isEmpty() ? 0 : qFromBigEndian<qint64>(large.constData());
            headerSize = 16;
            if (size < headerSize) {
                break;
            }
        } else if (size == 0) {
            size = end - at; // to the end of the file
        }
        Box box = {.type = head.mid(4), .content = {}};
        if (box.type == "uuid") {
            box.uuid = reader.bytes(at + headerSize, 16);
            headerSize += 16;
        }
        if (size < headerSize) {
            break;
        }
        size = std::min(size, end - at);
        box.content = {at + headerSize, std::max<qint64>(size - headerSize, 0)};
        result.append(box);
        at += size;
    }
    return result;
}

std::optional<BoxReader::Box> BoxReader::find(const QList<Box> &boxes, QByteArrayView type)
{
    const auto found = std::ranges::find(boxes, type, &Box::type);
    return found != boxes.end() ? std::optional(*found) : std::nullopt;
}
