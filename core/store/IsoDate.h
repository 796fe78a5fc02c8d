// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

/// Dates as ISO 8601 writes them, in the one form that snapshots know.
namespace IsoDate {

/// YYYY-MM-DDThh:mm:ssZ in UTC, without the fraction of the second. A date that is invalid or lies
/// outside the years 1 to 9999 stops the program.
[[nodiscard]] QString text(const QDateTime &date);

/// The date in UTC of a text in exactly that form, or with an offset ±hh:mm in place of the Z.
/// Absent for any other text, for dates that no calendar has, and where text() would stop.
[[nodiscard]] std::optional<QDateTime> parse(const QString &text);

} // namespace IsoDate
