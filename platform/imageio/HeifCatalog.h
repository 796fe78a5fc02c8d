// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/HeifBoxes.h"
#include "platform/imageio/HeifItem.h"

#include <QHash>

/// The pictures of a HEIF file (ISO 23008-12) and how they belong together. For one thread.
class HeifCatalog {
public:
    /// Nothing when the file has no items or none is the primary one. @p reader must outlive this.
    [[nodiscard]] static std::optional<HeifCatalog> read(PagedReader &reader);

    [[nodiscard]] quint32 primary() const { return m_primary; }

    /// Nothing when there is no such item.
    [[nodiscard]] std::optional<HeifItem> item(quint32 id) const;

    /// Small pictures of an item, each once, and not too many to look at.
    [[nodiscard]] QList<quint32> thumbnails(quint32 id) const;
    /// Its transparency, gain map, depth, in the same way.
    [[nodiscard]] QList<quint32> auxiliaries(quint32 id) const;
    /// Whether the colours of the picture @p id are multiplied by the transparency @p alpha
    /// already.
    [[nodiscard]] bool isPremultiplied(quint32 id, quint32 alpha) const;

    /// The bytes of an item; empty when they are more than @p most.
    [[nodiscard]] QByteArray data(const HeifItem &item, qint64 most) const;

    /// The bytes of a profile, a large one of which may be that of thousands of tiles.
    [[nodiscard]] QByteArray profile(ByteRange icc) const;

private:
    struct Entry {
        QByteArray type;
        QList<qsizetype> properties;
        bool hasProperties = false;
        QList<ByteRange> extents;
        QList<quint32> inputs;
        QList<quint32> premultipliedBy;
        QList<quint32> thumbnails;
        QList<quint32> auxiliaries;
    };

    explicit HeifCatalog(PagedReader &reader);
    void readReferences(const HeifBoxes::Boxes &meta);
    void applyProperty(HeifItem &item, const BoxReader::Box &box) const;
    void applyColor(HeifItem &item, const BoxReader::Box &box) const;

    PagedReader *m_reader;
    quint32 m_primary = 0;
    HeifBoxes::Boxes m_properties;
    QHash<quint32, Entry> m_entries;
};
