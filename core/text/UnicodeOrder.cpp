// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/UnicodeOrder.h"

#include <QList>

#include <algorithm>

static bool isAscii(QStringView text)
{
    return std::ranges::all_of(text, [](QChar unit) { return unit.unicode() < 0x80; });
}

int compareInUnicodeOrder(const QString &left, const QString &right)
{
    if (isAscii(left) && isAscii(right)) {
        return left.compare(right);
    }
    // UTF-16 units sort surrogates before U+E000 to U+FFFF; code points do not.
    const auto a = left.normalized(QString::NormalizationForm_C).toUcs4();
    const auto b = right.normalized(QString::NormalizationForm_C).toUcs4();
    if (std::ranges::lexicographical_compare(a, b)) {
        return -1;
    }
    return a == b ? 0 : 1;
}

QString upperCased(const QString &text)
{
    return text.toUpper();
}
