// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/UpdateSchedule.h"

#include "platform/settings/UserDefaults.h"

using namespace Qt::StringLiterals;

constexpr qint64 secondsOfADay = 24 * 60 * 60;

bool UpdateSchedule::isDue(const QDateTime &now)
{
    const auto text = m_defaults.bytes(u"lastUpdateSearch"_s);
    const auto last =
        QDateTime::fromString(QString::fromLatin1(text.value_or(QByteArray())), Qt::ISODate);
    if (!last.isValid()) {
        noteSearch(now);
        return false;
    }
    const auto passed = last.secsTo(now);
    return passed >= secondsOfADay || passed < 0;
}

void UpdateSchedule::noteSearch(const QDateTime &now)
{
    m_defaults.setBytes(u"lastUpdateSearch"_s, now.toUTC().toString(Qt::ISODate).toLatin1());
}

QString UpdateSchedule::toldVersion() const
{
    return QString::fromUtf8(m_defaults.bytes(u"toldVersion"_s).value_or(QByteArray()));
}

void UpdateSchedule::noteTold(const QString &version)
{
    m_defaults.setBytes(u"toldVersion"_s, version.toUtf8());
}
