// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>

#include <utility>
#include <vector>

/// One image file directory of a TIFF structure (TIFF 6.0; Exif 2.32 and DNG 1.4 build on it),
/// little-endian. Values are kept in tag order, whatever order they are set in.
class TiffDirectory {
public:
    using Rational = std::pair<qint32, qint32>;

    void setAscii(quint16 tag, const QByteArray &text); ///< the closing zero is added
    void setBytes(quint16 tag, const QByteArray &bytes);
    void setUndefined(quint16 tag, const QByteArray &bytes);
    void setShorts(quint16 tag, const QList<quint16> &values);
    void setLongs(quint16 tag, const QList<quint32> &values);
    void setSignedLongs(quint16 tag, const QList<qint32> &values);
    void setRationals(quint16 tag, const QList<Rational> &values);
    void setSignedRationals(quint16 tag, const QList<Rational> &values);

    /// Directories that the tag points to, such as the Exif directory or the sub-images of a DNG.
    void setDirectories(quint16 tag, const std::vector<TiffDirectory> &directories);

    /// Data that the tag gives only the place of, such as a strip or a thumbnail.
    void setData(quint16 tag, const QByteArray &data);

    /// The directory and all it points to, for a place @p at bytes after the structure's start;
    /// @p next is where the following directory will lie, 0 for none.
    [[nodiscard]] QByteArray bytes(quint32 at, quint32 next = 0) const;

    /// A whole structure: header and the chain of directories.
    [[nodiscard]] static QByteArray file(const std::vector<TiffDirectory> &chain);

private:
    struct Entry {
        quint16 tag = 0;
        quint16 type = 0;
        quint32 count = 0;
        QByteArray value = {};
        std::vector<TiffDirectory> directories = {};
        bool isData = false;
    };

    void set(Entry entry);

    std::vector<Entry> m_entries;
};
