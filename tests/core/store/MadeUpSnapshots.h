// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/store/SessionSnapshot.h"

#include <rapidcheck.h>

/// Any text that a file can hold: code points of every length in UTF-8, control characters, those
/// that stand for bytes of a name, never half a surrogate pair.
inline rc::Gen<QString> anyText()
{
    const auto codePoint = rc::gen::oneOf(
        rc::gen::inRange<char32_t>(0, 0x20), rc::gen::inRange<char32_t>(0x20, 0x80),
        rc::gen::inRange<char32_t>(0x80, 0x800), rc::gen::inRange<char32_t>(0x300, 0x370),
        rc::gen::inRange<char32_t>(0x800, 0xD800), rc::gen::inRange<char32_t>(0xE000, 0x10000),
        rc::gen::inRange<char32_t>(0x10000, 0x110000),
        rc::gen::inRange<char32_t>(0x10FE80, 0x10FF00),
        rc::gen::element<char32_t>(U'"', U'\\', U'/', U'\n', 0, 0x7F, 0x2028, 0xFEFF, 0xFFFE));
    return rc::gen::map(rc::gen::container<std::vector<char32_t>>(codePoint), [](const auto &text) {
        return QString::fromUcs4(text.data(), static_cast<qsizetype>(text.size()));
    });
}

/// Any snapshot that may be saved, its date with a fraction of a second.
inline rc::Gen<SessionSnapshot> anySnapshot()
{
    static const auto first = QDate(1, 1, 1).startOfDay(Qt::UTC).toMSecsSinceEpoch();
    static const auto afterLast = QDate(10000, 1, 1).startOfDay(Qt::UTC).toMSecsSinceEpoch();
    return rc::gen::exec([] {
        SessionSnapshot snapshot;
        snapshot.volumeUUID = *anyText();
        snapshot.inventoryHash = *anyText();
        for (const auto &id : *rc::gen::container<std::vector<QString>>(anyText())) {
            snapshot.rejectedIDs.insert(id);
        }
        snapshot.currentIndex = *rc::gen::arbitrary<qint64>();
        snapshot.savedAt =
            QDateTime::fromMSecsSinceEpoch(*rc::gen::inRange<qint64>(first, afterLast), Qt::UTC);
        return snapshot;
    });
}

/// @p snapshot as it comes back.
[[nodiscard]] inline SessionSnapshot inWholeSeconds(SessionSnapshot snapshot)
{
    const auto time = snapshot.savedAt.time();
    snapshot.savedAt.setTime(QTime(time.hour(), time.minute(), time.second()));
    return snapshot;
}

namespace rc {
inline void showValue(const QString &text, std::ostream &out)
{
    out << '"' << text.toUtf8().toPercentEncoding().constData() << '"';
}

inline void showValue(const SessionSnapshot &snapshot, std::ostream &out)
{
    out << snapshot.toJson().toPercentEncoding(" {}[]:,\"").constData();
}
} // namespace rc
