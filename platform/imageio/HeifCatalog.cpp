// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/HeifCatalog.h"

#include <algorithm>
#include <numeric>

/// The parameter sets of one coded picture: some hundred bytes.
constexpr qint64 largestConfiguration = 16 * 1024;
constexpr qint64 largestProfile = 4 * 1024 * 1024;

/// Thumbnails of an item, and as many other pictures that go with it: cameras write a handful.
constexpr qsizetype mostCompanions = 16;

static void addOnce(QList<quint32> &companions, quint32 item)
{
    if (companions.size() < mostCompanions && !companions.contains(item)) {
        companions.append(item);
    }
}

HeifCatalog::HeifCatalog(PagedReader &reader)
    : m_reader(&reader)
{
}

std::optional<HeifCatalog> HeifCatalog::read(PagedReader &reader)
{
    const auto meta = HeifBoxes::meta(reader);
    const auto primary = meta ? HeifBoxes::primaryItem(reader, *meta) : std::nullopt;
    if (!primary) {
        return std::nullopt;
    }
    HeifCatalog catalog(reader);
    catalog.m_primary = *primary;
    auto &entries = catalog.m_entries;
    HeifBoxes::forEachItem(reader, *meta, [&](quint32 item, const QByteArray &type) {
        entries[item].type = type;
        return true;
    });
    const auto withEntry = [&](quint32 item, auto change) {
        if (const auto found = entries.find(item); found != entries.end()) {
            change(*found);
        }
        return true;
    };
    auto properties = HeifBoxes::properties(reader, *meta);
    HeifBoxes::forEachAssociation(reader, properties,
                                  [&](quint32 item, const QList<qsizetype> &places) {
                                      return withEntry(item, [&](Entry &entry) {
                                          if (!entry.hasProperties) {
                                              entry.properties = places;
                                              entry.hasProperties = true;
                                          }
                                      });
                                  });
    catalog.m_properties = std::move(properties.all);
    HeifBoxes::forEachLocation(reader, *meta, [&](quint32 item, const QList<ByteRange> &extents) {
        return withEntry(item, [&](Entry &entry) { entry.extents = extents; });
    });
    catalog.readReferences(*meta);
    return catalog;
}

void HeifCatalog::readReferences(const HeifBoxes::Boxes &meta)
{
    HeifBoxes::forEachReference(
        *m_reader, meta, [&](const QByteArray &type, quint32 from, const QList<quint32> &to) {
            if (type == "thmb" || type == "auxl") {
                for (const auto master : to) {
                    if (const auto entry = m_entries.find(master); entry != m_entries.end()) {
                        addOnce(type == "thmb" ? entry->thumbnails : entry->auxiliaries, from);
                    }
                }
            } else if (const auto entry = m_entries.find(from); entry != m_entries.end()) {
                if (type == "dimg") {
                    entry->inputs = to;
                } else if (type == "prem") {
                    entry->premultipliedBy = to;
                }
            }
            return true;
        });
}

std::optional<HeifItem> HeifCatalog::item(quint32 id) const
{
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end()) {
        return std::nullopt;
    }
    HeifItem item{.type = entry->type, .extents = entry->extents, .inputs = entry->inputs};
    for (const auto place : entry->properties) {
        applyProperty(item, m_properties.at(place));
    }
    return item;
}

void HeifCatalog::applyProperty(HeifItem &item, const BoxReader::Box &box) const
{
    using Kind = HeifItem::Step::Kind;
    if (box.type == "ispe") {
        constexpr qint64 wholeLength = 12;
        auto [version, flags, content] = HeifBoxes::fullBox(*m_reader, box, wholeLength);
        constexpr quint64 longestEdge = 1 << 20;
        const auto width = std::min(content.take(4), longestEdge);
        const auto height = std::min(content.take(4), longestEdge);
        item.size = {static_cast<int>(width), static_cast<int>(height)};
    } else if (box.type == "hvcC" && item.configuration.isEmpty() &&
               box.content.length <= largestConfiguration) {
        item.configuration = m_reader->bytes(box.content.offset, box.content.length);
    } else if (box.type == "colr") {
        applyColor(item, box);
    } else if (box.type == "auxC") {
        constexpr qint64 longestName = 256;
        item.purpose = HeifBoxes::fullBox(*m_reader, box, longestName).content.takeText();
    } else if (box.type == "irot" || box.type == "imir") {
        const auto value = m_reader->bytes(box.content.offset, 1);
        if (!value.isEmpty()) {
            const bool turns = box.type == "irot";
            item.steps.append({.kind = turns ? Kind::Turn : Kind::Mirror,
                               .value = value.at(0) & (turns ? 3 : 1)});
        }
    } else if (box.type == "clap") {
        ByteCursor content(m_reader->bytes(box.content.offset, 32));
        HeifItem::Step step{.kind = Kind::Crop};
        for (auto &number : step.window) {
            number = static_cast<qint32>(content.take(4));
        }
        if (!content.failed()) {
            item.steps.append(step);
        }
    }
}

void HeifCatalog::applyColor(HeifItem &item, const BoxReader::Box &box) const
{
    constexpr qint64 numbersLength = 11;
    ByteCursor content(
        m_reader->bytes(box.content.offset, std::min(box.content.length, numbersLength)));
    const auto type = content.takeBytes(4);
    if (type == "nclx") {
        CodedColor color;
        color.primaries = static_cast<int>(content.take(2));
        color.transfer = static_cast<int>(content.take(2));
        color.matrix = static_cast<int>(content.take(2));
        color.fullRange = (content.take(1) & 0x80) != 0;
        if (!content.failed()) {
            item.color = color;
        }
    } else if ((type == "prof" || type == "rICC") && box.content.length <= largestProfile) {
        item.icc = {box.content.offset + 4, box.content.length - 4};
    }
}

QList<quint32> HeifCatalog::thumbnails(quint32 id) const
{
    return m_entries.value(id).thumbnails;
}

QList<quint32> HeifCatalog::auxiliaries(quint32 id) const
{
    return m_entries.value(id).auxiliaries;
}

bool HeifCatalog::isPremultiplied(quint32 id, quint32 alpha) const
{
    return m_entries.value(id).premultipliedBy.contains(alpha);
}

QByteArray HeifCatalog::profile(ByteRange icc) const
{
    return m_reader->file().bytes(icc.offset, icc.length);
}

QByteArray HeifCatalog::data(const HeifItem &item, qint64 most) const
{
    const auto total =
        std::accumulate(item.extents.begin(), item.extents.end(), qint64{0},
                        [](qint64 sum, const ByteRange &extent) { return sum + extent.length; });
    QByteArray result;
    if (total > most) {
        return result;
    }
    for (const auto &extent : item.extents) {
        result += m_reader->file().bytes(extent.offset, extent.length);
    }
    return result;
}
