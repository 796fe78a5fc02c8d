// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/SnapshotReader.h"

#include "core/store/IntegralNumber.h"
#include "core/store/IsoDate.h"

#include <QStringDecoder>

#include <map>
#include <utility>

/// Far more than a snapshot has, and what other readers of JSON bear, too.
constexpr int deepestNesting = 512;

constexpr std::size_t fieldCount = 5;

/// QString::fromUtf8 would take U+FEFF at the beginning for a byte order mark and drop it.
static QString textOf(const std::string &utf8)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return decoder(QByteArrayView(utf8));
}

std::optional<SessionSnapshot> SnapshotReader::snapshot() &&
{
    return m_present.size() == fieldCount ? std::optional(std::move(m_snapshot)) : std::nullopt;
}

/// A value that no field takes. Inside an object or array it spoils the field that this is the
/// value of. A document that is nothing but such a value is no snapshot.
bool SnapshotReader::takeMisfit()
{
    if (m_field) {
        m_present.erase(*m_field);
    }
    return m_depth > 0;
}

bool SnapshotReader::null()
{
    return takeMisfit();
}

bool SnapshotReader::boolean(bool)
{
    return takeMisfit();
}

bool SnapshotReader::binary(binary_t &)
{
    return takeMisfit();
}

bool SnapshotReader::takeIndex(std::optional<qint64> index)
{
    if (m_depth != 1 || m_field != Field::currentIndex || !index) {
        return takeMisfit();
    }
    m_snapshot.currentIndex = *index;
    m_present.insert(Field::currentIndex);
    return true;
}

bool SnapshotReader::number_integer(number_integer_t value)
{
    return takeIndex(value);
}

bool SnapshotReader::number_unsigned(number_unsigned_t value)
{
    return takeIndex(std::in_range<qint64>(value) ? std::optional(static_cast<qint64>(value))
                                                  : std::nullopt);
}

bool SnapshotReader::number_float(number_float_t, const string_t &text)
{
    return takeIndex(integralNumber(text));
}

bool SnapshotReader::string(string_t &value)
{
    if (m_depth == 2 && m_field == Field::rejectedIDs) {
        if (m_present.contains(Field::rejectedIDs)) {
            m_snapshot.rejectedIDs.insert(textOf(value));
        }
        return true;
    }
    takeMisfit();
    if (m_depth != 1) {
        return m_depth > 0;
    }
    if (m_field == Field::volumeUUID) {
        m_snapshot.volumeUUID = textOf(value);
        m_present.insert(Field::volumeUUID);
    } else if (m_field == Field::inventoryHash) {
        m_snapshot.inventoryHash = textOf(value);
        m_present.insert(Field::inventoryHash);
    } else if (m_field == Field::savedAt) {
        if (const auto date = IsoDate::parse(textOf(value))) {
            m_snapshot.savedAt = *date;
            m_present.insert(Field::savedAt);
        }
    }
    return true;
}

bool SnapshotReader::key(string_t &name)
{
    if (m_depth != 1) {
        return true;
    }
    static const std::map<std::string, Field> fields = {
        {"volumeUUID", Field::volumeUUID},   {"inventoryHash", Field::inventoryHash},
        {"rejectedIDs", Field::rejectedIDs}, {"currentIndex", Field::currentIndex},
        {"savedAt", Field::savedAt},
    };
    const auto field = fields.find(name);
    m_field = field != fields.end() ? std::optional(field->second) : std::nullopt;
    return true;
}

bool SnapshotReader::enter()
{
    return ++m_depth <= deepestNesting;
}

bool SnapshotReader::start_object(std::size_t)
{
    takeMisfit();
    return enter();
}

bool SnapshotReader::end_object()
{
    --m_depth;
    return true;
}

bool SnapshotReader::start_array(std::size_t)
{
    if (m_depth == 1 && m_field == Field::rejectedIDs) {
        m_snapshot.rejectedIDs.clear();
        m_present.insert(Field::rejectedIDs);
        return enter();
    }
    return takeMisfit() && enter();
}

bool SnapshotReader::end_array()
{
    --m_depth;
    return true;
}

bool SnapshotReader::parse_error(std::size_t, const std::string &,
                                 const nlohmann::detail::exception &)
{
    return false;
}
