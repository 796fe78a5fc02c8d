// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/PagedReader.h"

#include <QVariant>

#include <optional>

/// Reads the directories and values of one TIFF structure (TIFF 6.0, BigTIFF, and the variants of
/// camera RAW files that differ in the magic number only) within a stretch of a file. Every offset
/// in it is checked against that stretch, and every count bounded. For one thread.
class TiffReader {
public:
    enum class ByteOrder { Little, Big };

    /// One field of a directory; its value is read on demand.
    struct Entry {
        quint16 tag = 0;
        quint16 type = 0;
        quint64 count = 0;
        /// Where the value begins, within the structure.
        qint64 offset = 0;
    };

    struct Directory {
        QList<Entry> entries = {};
        /// The next directory of the chain, within the structure; 0 at the end.
        qint64 next = 0;

        [[nodiscard]] std::optional<Entry> find(quint16 tag) const;
    };

    /// Nothing unless a TIFF header stands at the beginning of @p range. The header's magic number
    /// may be 42, 43, or one of the cameras' own. @p reader must outlive this.
    [[nodiscard]] static std::optional<TiffReader> open(PagedReader &reader, ByteRange range);

    /// A structure without a header, such as a maker note with an order of its own.
    TiffReader(PagedReader &reader, ByteRange range, ByteOrder order);

    /// Where the first directory is, within the structure.
    [[nodiscard]] qint64 firstDirectory() const { return m_first; }

    [[nodiscard]] quint16 magic() const { return m_magic; }

    [[nodiscard]] ByteRange range() const { return m_range; }

    [[nodiscard]] PagedReader &reader() const { return *m_reader; }

    [[nodiscard]] std::optional<Directory> directory(qint64 offset) const;

    /// The value as a qint64, a double or a QString, or a QVariantList when there are several or
    /// @p asList says so; invalid for other types, for values out of bounds and for fractions
    /// whose denominator is 0.
    enum class Shape { Plain, List };
    [[nodiscard]] QVariant value(const Entry &entry, Shape shape = Shape::Plain) const;

    /// The integers of an entry, empty when it has others. At most 4096 of them.
    [[nodiscard]] QList<qint64> integers(const std::optional<Entry> &entry) const;
    [[nodiscard]] std::optional<qint64> integer(const std::optional<Entry> &entry) const;

    /// The value's place in the file, if it lies within the structure.
    [[nodiscard]] std::optional<ByteRange> place(const Entry &entry) const;

private:
    /// Valid until the reader is used again.
    [[nodiscard]] QByteArrayView view(qint64 offset, qint64 length) const;
    [[nodiscard]] quint64 number(const char *data, int size) const;
    [[nodiscard]] QVariant element(quint16 type, const char *data) const;
    [[nodiscard]] Entry entry(const char *data, qint64 offset) const;

    PagedReader *m_reader;
    ByteRange m_range;
    ByteOrder m_order;
    bool m_wide = false;
    quint16 m_magic = 0;
    qint64 m_first = 0;
};
