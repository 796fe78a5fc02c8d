// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QSet>
#include <QString>

#include <optional>

/// The culling of one card as it is kept between two visits. The undo history is left out: a
/// resumed session begins with an empty one.
struct SessionSnapshot {
    QString volumeUUID = {};
    QString inventoryHash =
        {}; ///< SessionStore::inventoryHash() of the card's items: 64 hex digits
    QSet<QString> rejectedIDs = {};
    qint64 currentIndex = 0;
    QDateTime savedAt = {}; ///< UTC; only whole seconds are kept

    /// One JSON object in UTF-8 (RFC 8259), compact, its keys named as the fields; the date as in
    /// ISO 8601, in UTC with a Z and without a fraction. A date that is invalid, or not within the
    /// years 1 to 9999, stops the program.
    [[nodiscard]] QByteArray toJson() const;

    /// Absent when @p json is not one valid JSON object nested at most 512 deep, or a field is
    /// missing or of another type. Rejects that come twice count once; of a key that comes twice,
    /// the last value counts; other keys are ignored. The index may be written as 3.0, the date
    /// with an offset from UTC: ±hh:mm. Memory grows with the longest text and the rejects alone.
    [[nodiscard]] static std::optional<SessionSnapshot> fromJson(const QByteArray &json);

    bool operator==(const SessionSnapshot &) const = default;
};
