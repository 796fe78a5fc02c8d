// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffReader.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

namespace {

/// TIFF 6.0, section 2, and BigTIFF's additions.
enum Type : quint16 {
    Byte = 1,
    Ascii = 2,
    Short = 3,
    Long = 4,
    Rational = 5,
    SignedByte = 6,
    Undefined = 7,
    SignedShort = 8,
    SignedLong = 9,
    SignedRational = 10,
    Float = 11,
    Double = 12,
    Directory32 = 13,
    Long8 = 16,
    SignedLong8 = 17,
    Directory64 = 18,
};

constexpr quint16 classicMagic = 42;
constexpr quint16 bigMagic = 43;
/// Panasonic and Leica; Olympus, twice. What follows is plain TIFF.
constexpr std::array<quint16, 5> knownMagics = {classicMagic, bigMagic, 0x55, 0x4f52, 0x5352};

/// Cameras write some hundred entries at most.
constexpr quint64 mostEntries = 2000;
constexpr quint64 mostElements = 4096;
constexpr quint64 longestText = 4096;

int elementSize(quint16 type)
{
    switch (type) {
    case Byte:
    case Ascii:
    case SignedByte:
    case Undefined:
        return 1;
    case Short:
    case SignedShort:
        return 2;
    case Long:
    case SignedLong:
    case Float:
    case Directory32:
        return 4;
    case Rational:
    case SignedRational:
    case Double:
    case Long8:
    case SignedLong8:
    case Directory64:
        return 8;
    default:
        return 0;
    }
}

/// The text up to its first NUL. EXIF demands ASCII; cameras of today write UTF-8.
QString text(QByteArrayView bytes)
{
    return QString::fromUtf8(bytes.first(
        static_cast<qsizetype>(qstrnlen(bytes.constData(), static_cast<size_t>(bytes.size())))));
}

} // namespace

std::optional<TiffReader::Entry> TiffReader::Directory::find(quint16 tag) const
{
    const auto found = std::ranges::find(entries, tag, &Entry::tag);
    return found != entries.end() ? std::optional(*found) : std::nullopt;
}

TiffReader::TiffReader(PagedReader &reader, ByteRange range, ByteOrder order)
    : m_reader(&reader)
    , m_range(range)
    , m_order(order)
{
}

std::optional<TiffReader> TiffReader::open(PagedReader &reader, ByteRange range)
{
    TiffReader tiff(reader, range, ByteOrder::Little);
    const auto header = tiff.view(0, 8);
    if (header.startsWith("MM")) {
        tiff.m_order = ByteOrder::Big;
    } else if (!header.startsWith("II")) {
        return std::nullopt;
    }
    tiff.m_magic = static_cast<quint16>(tiff.number(header.constData() + 2, 2));
    if (std::ranges::find(knownMagics, tiff.m_magic) == knownMagics.end()) {
        return std::nullopt;
    }
    tiff.m_first = static_cast<qint64>(tiff.number(header.constData() + 4, 4));
    if (tiff.m_magic == bigMagic) {
        const auto offset = tiff.view(8, 8);
        if (offset.isEmpty()) {
            return std::nullopt;
        }
        tiff.m_wide = true;
        tiff.m_first = static_cast<qint64>(tiff.number(offset.constData(), 8));
    }
    return tiff;
}

QByteArrayView TiffReader::view(qint64 offset, qint64 length) const
{
    if (offset < 0 || length < 0 || length > m_range.length || offset > m_range.length - length) {
        return {};
    }
    return m_reader->view(m_range.offset + offset, length);
}

quint64 TiffReader::number(const char *data, int size) const
{
    const auto read = [this, data]<typename Number>(Number) -> quint64 {
        return m_order == ByteOrder::Big ? qFromBigEndian<Number>(data)
                                         : qFromLittleEndian<Number>(data);
    };
    switch (size) {
    case 1:
        return static_cast<uchar>(*data);
    case 2:
        return read(quint16());
    case 4:
        return read(quint32());
    default:
        return read(quint64());
    }
}

TiffReader::Entry TiffReader::entry(const char *data, qint64 offset) const
{
    const int width = m_wide ? 8 : 4;
    Entry result;
    result.tag = static_cast<quint16>(number(data, 2));
    result.type = static_cast<quint16>(number(data + 2, 2));
    result.count = number(data + 4, width);
    const auto size = static_cast<quint64>(elementSize(result.type));
    const bool fits = size == 0 || result.count <= static_cast<quint64>(width) / size;
    result.offset =
        fits ? offset + 4 + width : static_cast<qint64>(number(data + 4 + width, width));
    return result;
}

std::optional<TiffReader::Directory> TiffReader::directory(qint64 offset) const
{
    const int countSize = m_wide ? 8 : 2;
    const int entrySize = m_wide ? 20 : 12;
    const auto head = view(offset, countSize);
    if (head.isEmpty()) {
        return std::nullopt;
    }
    const auto count = number(head.constData(), countSize);
    if (count == 0 || count > mostEntries) {
        return std::nullopt;
    }
    const auto first = offset + countSize;
    const auto length = static_cast<qint64>(count) * entrySize;
    const auto table = view(first, length);
    Directory result;
    result.entries.resize(static_cast<qsizetype>(count));
    auto *filled = result.entries.data();
    for (qint64 from = 0; from < length; from += entrySize) {
        const auto data =
            table.isEmpty() ? view(first + from, entrySize) : table.sliced(from, entrySize);
        if (data.isEmpty()) {
            result.entries.resize(from / entrySize);
            return result; // cut short: what came before it is good
        }
        *filled++ = entry(data.constData(), first + from);
    }
    const int width = m_wide ? 8 : 4;
    const auto next = view(first + length, width);
    result.next = next.isEmpty() ? 0 : static_cast<qint64>(number(next.constData(), width));
    return result;
}

QVariant TiffReader::element(quint16 type, const char *data) const
{
    const auto size = elementSize(type);
    switch (type) {
    case Byte:
    case Short:
    case Long:
    case Directory32:
    case Long8:
    case Directory64:
        return static_cast<qint64>(number(data, size));
    case SignedByte:
        return qint64{static_cast<qint8>(number(data, size))};
    case SignedShort:
        return qint64{static_cast<qint16>(number(data, size))};
    case SignedLong:
        return qint64{static_cast<qint32>(number(data, size))};
    case SignedLong8:
        return static_cast<qint64>(number(data, size));
    case Float:
        return double{std::bit_cast<float>(static_cast<quint32>(number(data, size)))};
    case Double:
        return std::bit_cast<double>(number(data, size));
    case Rational: {
        const auto denominator = number(data + 4, 4);
        const auto numerator = static_cast<double>(number(data, 4));
        return denominator != 0 ? QVariant(numerator / static_cast<double>(denominator))
                                : QVariant();
    }
    case SignedRational: {
        const auto denominator = static_cast<qint32>(number(data + 4, 4));
        const auto numerator = static_cast<qint32>(number(data, 4));
        return denominator != 0 ? QVariant(double{1} * numerator / denominator) : QVariant();
    }
    default:
        return {};
    }
}

QVariant TiffReader::value(const Entry &entry, Shape shape) const
{
    const auto size = elementSize(entry.type);
    if (size == 0) {
        return {};
    }
    if (entry.type == Ascii) {
        const auto length = static_cast<qint64>(std::min(entry.count, longestText));
        const auto read = view(entry.offset, length);
        return read.isEmpty() ? QVariant() : QVariant(text(read));
    }
    if (entry.count > mostElements) {
        return {};
    }
    const auto count = static_cast<qint64>(entry.count);
    const auto data = view(entry.offset, count * size);
    if (data.size() != count * size) {
        return {};
    }
    if (shape == Shape::Plain && count == 1) {
        return element(entry.type, data.constData());
    }
    QVariantList list;
    for (qint64 index = 0; index < count; ++index) {
        list.append(element(entry.type, data.constData() + index * size));
    }
    return list;
}

QList<qint64> TiffReader::integers(const std::optional<Entry> &entry) const
{
    QList<qint64> result;
    const auto list = entry ? value(*entry, Shape::List).toList() : QVariantList();
    for (const auto &element : list) {
        if (element.metaType() != QMetaType::fromType<qint64>()) {
            return {};
        }
        result.append(element.toLongLong());
    }
    return result;
}

std::optional<qint64> TiffReader::integer(const std::optional<Entry> &entry) const
{
    const auto only = entry && entry->count == 1 ? value(*entry) : QVariant();
    return only.metaType() == QMetaType::fromType<qint64>() ? std::optional(only.toLongLong())
                                                            : std::nullopt;
}

std::optional<ByteRange> TiffReader::place(const Entry &entry) const
{
    const auto size = static_cast<quint64>(elementSize(entry.type));
    const auto limit = static_cast<quint64>(m_range.length);
    if (size == 0 || entry.offset < 0 || entry.count > limit / size) {
        return std::nullopt;
    }
    const auto length = static_cast<qint64>(entry.count * size);
    if (entry.offset > m_range.length - length) {
        return std::nullopt;
    }
    return ByteRange{m_range.offset + entry.offset, length};
}
