// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/X3fDirectory.h"

#include <QtEndian>

#include <algorithm>

namespace {

/// Cameras write fewer than ten.
constexpr quint32 mostSections = 64;
/// The first of the two halves of a header's version that has the size further back.
constexpr quint16 versionWithSizeBehind = 4;

qint64 numberAt(PagedReader &reader, qint64 at)
{
    const auto data = reader.bytes(at, 4);
    return data.isEmpty() ? 0 : qint64{qFromLittleEndian<quint32>(data.constData())};
}

void readSize(X3fDirectory &directory, PagedReader &reader)
{
    const auto version = numberAt(reader, 4) >> 16;
    const qint64 at = version >= versionWithSizeBehind ? 40 : 28;
    const auto width = numberAt(reader, at);
    const auto height = numberAt(reader, at + 4);
    if (width > 0 && height > 0) {
        directory.width = width;
        directory.height = height;
    }
}

/// Where the JPEG stream in an image section is, if one is.
std::optional<ByteRange> jpegIn(PagedReader &reader, ByteRange section)
{
    constexpr qint64 headerLength = 28;
    constexpr qint64 jpegFormat = 18;
    if (section.length <= headerLength || reader.bytes(section.offset, 4) != "SECi" ||
        numberAt(reader, section.offset + 12) != jpegFormat) {
        return std::nullopt;
    }
    return ByteRange{section.offset + headerLength, section.length - headerLength};
}

} // namespace

std::optional<X3fDirectory> X3fDirectory::read(PagedReader &reader)
{
    const auto at = numberAt(reader, reader.size() - 4);
    if (reader.bytes(0, 4) != "FOVb" || reader.bytes(at, 4) != "SECd") {
        return std::nullopt;
    }
    X3fDirectory directory;
    readSize(directory, reader);
    const auto count = std::min<qint64>(numberAt(reader, at + 8), mostSections);
    for (qint64 index = 0; index < count; ++index) {
        const auto entry = reader.bytes(at + 12 + 12 * index, 12);
        if (!entry.endsWith("IMA2") && !entry.endsWith("IMAG")) {
            continue;
        }
        const qint64 offset = qFromLittleEndian<quint32>(entry.constData());
        const qint64 length = qFromLittleEndian<quint32>(entry.constData() + 4);
        const auto available = std::clamp<qint64>(reader.size() - offset, 0, length);
        if (const auto jpeg = jpegIn(reader, {offset, available})) {
            directory.jpegs.append(*jpeg);
        }
    }
    return directory;
}
