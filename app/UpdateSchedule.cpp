// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/UpdateSchedule.h"

#include "platform/settings/UserDefaults.h"

using namespace Qt::StringLiterals;

constexpr qint64 secondsOfADay = 24 * 60 * 60;
constexpr qint64 secondsOfAWeek = 7 * secondsOfADay;

static QByteArray written(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODate).toLatin1();
}

/// A time that is still to come, because a clock was set back, was long ago.
static bool isWithin(qint64 seconds, const QByteArray &time, const QDateTime &now)
{
    const auto then = QDateTime::fromString(QString::fromLatin1(time), Qt::ISODate);
    return then.isValid() && then <= now && then.secsTo(now) < seconds;
}

bool UpdateSchedule::isDue(const QDateTime &now)
{
    const auto last = m_defaults.bytes(u"lastUpdateSearch"_s).value_or(QByteArray());
    if (!QDateTime::fromString(QString::fromLatin1(last), Qt::ISODate).isValid()) {
        noteSearch(now);
        return false;
    }
    return !isWithin(secondsOfADay, last, now);
}

void UpdateSchedule::noteSearch(const QDateTime &now)
{
    m_defaults.setBytes(u"lastUpdateSearch"_s, written(now));
}

QStringList UpdateSchedule::knownVersions(const QDateTime &now) const
{
    QStringList versions;
    if (const auto told = m_defaults.bytes(u"toldVersion"_s)) {
        versions.append(QString::fromUtf8(*told));
    }
    // A time, a space, the version.
    const auto failed = m_defaults.bytes(u"failedVersion"_s).value_or(QByteArray());
    const auto space = failed.indexOf(' ');
    if (space > 0 && isWithin(secondsOfAWeek, failed.first(space), now)) {
        versions.append(QString::fromUtf8(failed.sliced(space + 1)));
    }
    return versions;
}

void UpdateSchedule::noteTold(const QString &version)
{
    m_defaults.setBytes(u"toldVersion"_s, version.toUtf8());
}

void UpdateSchedule::noteFailed(const QString &version, const QDateTime &now)
{
    m_defaults.setBytes(u"failedVersion"_s, written(now) + ' ' + version.toUtf8());
}
