// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/IsoDate.h"

#include "platform/checks/Precondition.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

static bool hasFourDigitYear(const QDateTime &utc)
{
    return utc.isValid() && utc.date().year() >= 1 && utc.date().year() <= 9999;
}

/// East of Greenwich is positive; "Z" is zero. Absent where the offset reaches a day.
static std::optional<qint64> offsetInSeconds(const QRegularExpressionMatch &match)
{
    const auto hours = match.captured(u"offsetHours"_s).toInt();
    const auto minutes = match.captured(u"offsetMinutes"_s).toInt();
    if (hours > 23 || minutes > 59) {
        return std::nullopt;
    }
    const qint64 seconds = 60 * (60 * hours + minutes);
    return match.captured(u"sign"_s) == u"-"_s ? -seconds : seconds;
}

QString IsoDate::text(const QDateTime &date)
{
    const auto utc = date.toUTC();
    precondition(hasFourDigitYear(utc), "a date has four digits for the year");
    const auto day = utc.date();
    const auto time = utc.time();
    return QString::asprintf("%04d-%02d-%02dT%02d:%02d:%02dZ", day.year(), day.month(), day.day(),
                             time.hour(), time.minute(), time.second());
}

// QDateTime::fromString would take more: an hour 24, a fraction, a missing time, an offset in other
// forms.
std::optional<QDateTime> IsoDate::parse(const QString &text)
{
    static const QRegularExpression form(
        u"\\A([0-9]{4})-([0-9]{2})-([0-9]{2})T([0-9]{2}):([0-9]{2}):([0-9]{2})"
        "(?:Z|(?<sign>[+-])(?<offsetHours>[0-9]{2}):(?<offsetMinutes>[0-9]{2}))\\z"_s);
    const auto match = form.match(text);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    const auto number = [&](int group) { return match.captured(group).toInt(); };
    const QDate day(number(1), number(2), number(3));
    const QTime time(number(4), number(5), number(6));
    const auto offset = offsetInSeconds(match);
    if (!day.isValid() || !time.isValid() || !offset) {
        return std::nullopt;
    }
    const auto utc = QDateTime(day, time, Qt::UTC).addSecs(-*offset);
    return hasFourDigitYear(utc) ? std::optional(utc) : std::nullopt;
}
