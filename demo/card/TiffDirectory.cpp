// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/TiffDirectory.h"

#include <QtEndian>

#include <algorithm>

// Types of TIFF 6.0, section 2.
constexpr quint16 typeByte = 1;
constexpr quint16 typeAscii = 2;
constexpr quint16 typeShort = 3;
constexpr quint16 typeLong = 4;
constexpr quint16 typeRational = 5;
constexpr quint16 typeUndefined = 7;
constexpr quint16 typeSignedLong = 9;
constexpr quint16 typeSignedRational = 10;

template<typename T>
static void append(QByteArray &to, T value)
{
    const T little = qToLittleEndian(value);
    to.append(reinterpret_cast<const char *>(&little), sizeof little);
}

template<typename T>
static QByteArray packed(const QList<T> &values)
{
    QByteArray bytes;
    for (const T value : values) {
        append(bytes, value);
    }
    return bytes;
}

static QByteArray packed(const QList<TiffDirectory::Rational> &values)
{
    QByteArray bytes;
    for (const auto &[numerator, denominator] : values) {
        append(bytes, numerator);
        append(bytes, denominator);
    }
    return bytes;
}

static quint32 countOf(qsizetype count)
{
    return static_cast<quint32>(count);
}

void TiffDirectory::set(Entry entry)
{
    const auto place =
        std::lower_bound(m_entries.begin(), m_entries.end(), entry.tag,
                         [](const Entry &existing, quint16 tag) { return existing.tag < tag; });
    if (place != m_entries.end() && place->tag == entry.tag) {
        *place = std::move(entry);
    } else {
        m_entries.insert(place, std::move(entry));
    }
}

void TiffDirectory::setAscii(quint16 tag, const QByteArray &text)
{
    set({tag, typeAscii, countOf(text.size() + 1), text + '\0'});
}

void TiffDirectory::setBytes(quint16 tag, const QByteArray &bytes)
{
    set({tag, typeByte, countOf(bytes.size()), bytes});
}

void TiffDirectory::setUndefined(quint16 tag, const QByteArray &bytes)
{
    set({tag, typeUndefined, countOf(bytes.size()), bytes});
}

void TiffDirectory::setShorts(quint16 tag, const QList<quint16> &values)
{
    set({tag, typeShort, countOf(values.size()), packed(values)});
}

void TiffDirectory::setLongs(quint16 tag, const QList<quint32> &values)
{
    set({tag, typeLong, countOf(values.size()), packed(values)});
}

void TiffDirectory::setSignedLongs(quint16 tag, const QList<qint32> &values)
{
    set({tag, typeSignedLong, countOf(values.size()), packed(values)});
}

void TiffDirectory::setRationals(quint16 tag, const QList<Rational> &values)
{
    set({tag, typeRational, countOf(values.size()), packed(values)});
}

void TiffDirectory::setSignedRationals(quint16 tag, const QList<Rational> &values)
{
    set({tag, typeSignedRational, countOf(values.size()), packed(values)});
}

void TiffDirectory::setDirectories(quint16 tag, const std::vector<TiffDirectory> &directories)
{
    set({tag, typeLong, static_cast<quint32>(directories.size()), {}, directories});
}

void TiffDirectory::setData(quint16 tag, const QByteArray &data)
{
    set({tag, typeLong, 1, data, {}, true});
}

QByteArray TiffDirectory::bytes(quint32 at, quint32 next) const
{
    QByteArray head;
    QByteArray tail;
    append(head, static_cast<quint16>(m_entries.size()));
    const auto headSize = static_cast<quint32>(2 + 12 * m_entries.size() + 4);
    const auto tailPlace = [&] { return at + headSize + countOf(tail.size()); };
    const auto appendTail = [&tail](const QByteArray &bytes) {
        tail += bytes;
        if (tail.size() % 2 != 0) {
            tail += '\0'; // everything begins on a word boundary
        }
    };

    for (const auto &entry : m_entries) {
        append(head, entry.tag);
        append(head, entry.type);
        append(head, entry.count);
        QByteArray value = entry.value;
        if (entry.isData) {
            const quint32 place = tailPlace();
            appendTail(entry.value);
            value.clear();
            append(value, place);
        } else if (!entry.directories.empty()) {
            // The places of several directories form a list of their own, ahead of them.
            value.clear();
            const auto listSize =
                entry.directories.size() > 1
                    ? countOf(4 * static_cast<qsizetype>(entry.directories.size()))
                    : 0;
            QByteArray children;
            const quint32 first = tailPlace() + listSize;
            for (const auto &directory : entry.directories) {
                const quint32 place = first + countOf(children.size());
                append(value, place);
                children += directory.bytes(place);
            }
            if (listSize > 0) {
                const quint32 place = tailPlace();
                appendTail(value);
                value.clear();
                append(value, place);
            }
            appendTail(children);
        } else if (value.size() > 4) {
            const quint32 place = tailPlace();
            appendTail(value);
            value.clear();
            append(value, place);
        }
        head += value.leftJustified(4, '\0');
    }
    append(head, next);
    return head + tail;
}

QByteArray TiffDirectory::file(const std::vector<TiffDirectory> &chain)
{
    QByteArray result("II*\0\x08\0\0\0", 8);
    for (size_t i = 0; i < chain.size(); ++i) {
        const quint32 at = countOf(result.size());
        const quint32 next = i + 1 < chain.size() ? at + countOf(chain[i].bytes(at).size()) : 0;
        result += chain[i].bytes(at, next);
    }
    return result;
}
