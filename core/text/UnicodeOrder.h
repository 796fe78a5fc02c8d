// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// The order and the letter case of ids and names: code points after canonical composition (NFC),
/// the same whatever the user's language.

/// Negative, zero or positive as @p left comes before, equals or comes after @p right. Canonically
/// equivalent texts are equal.
[[nodiscard]] int compareInUnicodeOrder(const QString &left, const QString &right);

[[nodiscard]] inline bool precedesInUnicodeOrder(const QString &left, const QString &right)
{
    return compareInUnicodeOrder(left, right) < 0;
}

/// Unicode's full upper case, independent of the locale: "straße" becomes "STRASSE".
[[nodiscard]] QString upperCased(const QString &text);
