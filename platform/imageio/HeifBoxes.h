// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/BoxReader.h"
#include "platform/imageio/ByteCursor.h"
#include "platform/imageio/ByteRange.h"

#include <functional>
#include <optional>

/// The boxes of a file that is made of items (ISO 14496-12, 8.11, and ISO 23008-12, 9.3), one kind
/// at a time. Visitors return false when they have seen enough. Whatever a damaged file says, the
/// work is bounded by the bytes it has.
namespace HeifBoxes {

using Boxes = QList<BoxReader::Box>;

struct FullBox {
    int version = 0;
    quint32 flags = 0;
    ByteCursor content;
};

/// At most the first @p length bytes of its content.
[[nodiscard]] FullBox fullBox(PagedReader &reader, const BoxReader::Box &box, qint64 length);

/// The boxes of the file's "meta" box; nothing when it has none.
[[nodiscard]] std::optional<Boxes> meta(PagedReader &reader);

[[nodiscard]] std::optional<quint32> primaryItem(PagedReader &reader, const Boxes &meta);

/// Items and the four characters of their types.
void forEachItem(PagedReader &reader, const Boxes &meta,
                 const std::function<bool(quint32 item, const QByteArray &type)> &visit);

struct Properties {
    Boxes all;
    /// Which item has which of them.
    Boxes associations;
};
[[nodiscard]] Properties properties(PagedReader &reader, const Boxes &meta);

/// Items and the places of their properties in Properties::all, in the order of association.
/// Nothing keeps a damaged file from naming an item twice: the first counts.
void forEachAssociation(
    PagedReader &reader, const Properties &properties,
    const std::function<bool(quint32 item, const QList<qsizetype> &places)> &visit);

/// Items and where their bytes are, for those whose bytes are in this file. Reaches to the file's
/// end at most.
void forEachLocation(
    PagedReader &reader, const Boxes &meta,
    const std::function<bool(quint32 item, const QList<ByteRange> &extents)> &visit);

/// The references of one item to others; @p type has four characters.
void forEachReference(PagedReader &reader, const Boxes &meta,
                      const std::function<bool(const QByteArray &type, quint32 from,
                                               const QList<quint32> &to)> &visit);

} // namespace HeifBoxes
