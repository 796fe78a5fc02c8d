// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/IsoDate.h"

#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;

static QDateTime utc(int year, int month, int day, int hour, int minute, int second,
                     int millisecond = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second, millisecond), Qt::UTC);
}

class IsoDateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writesUtcInWholeSeconds_data()
    {
        QTest::addColumn<QDateTime>("date");
        QTest::addColumn<QString>("expected");
        QTest::newRow("utc") << utc(2026, 11, 15, 20, 51, 2) << u"2026-11-15T20:51:02Z"_s;
        QTest::newRow("fraction is cut off")
            << utc(2026, 11, 15, 20, 51, 2, 999) << u"2026-11-15T20:51:02Z"_s;
        QTest::newRow("fraction before 1970 is cut off as well")
            << utc(1969, 12, 31, 23, 59, 59, 999) << u"1969-12-31T23:59:59Z"_s;
        QTest::newRow("offset") << QDateTime(QDate(2027, 1, 1), QTime(0, 30), Qt::OffsetFromUTC,
                                             3600)
                                << u"2026-12-31T23:30:00Z"_s;
        QTest::newRow("time zone")
            << QDateTime(QDate(2026, 7, 1), QTime(12, 0), QTimeZone("Europe/Berlin"))
            << u"2026-07-01T10:00:00Z"_s;
        QTest::newRow("first") << utc(1, 1, 1, 0, 0, 0) << u"0001-01-01T00:00:00Z"_s;
        QTest::newRow("last") << utc(9999, 12, 31, 23, 59, 59) << u"9999-12-31T23:59:59Z"_s;
    }

    void writesUtcInWholeSeconds()
    {
        QFETCH(const QDateTime, date);
        QFETCH(const QString, expected);

        QCOMPARE(IsoDate::text(date), expected);
    }

    void readsOneFormOnly_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDateTime>("expected"); // invalid: absent
        const auto good = [](const char *text, const QDateTime &date) {
            QTest::newRow(text) << QString::fromUtf8(text) << date;
        };
        good("2026-11-15T20:51:02Z", utc(2026, 11, 15, 20, 51, 2));
        good("2026-11-15T20:51:02+00:00", utc(2026, 11, 15, 20, 51, 2));
        good("2026-11-15T20:51:02-00:00", utc(2026, 11, 15, 20, 51, 2));
        good("2026-11-15T20:51:02+05:30", utc(2026, 11, 15, 15, 21, 2));
        good("2026-11-15T20:51:02-08:00", utc(2026, 11, 16, 4, 51, 2));
        good("2026-11-15T20:51:02+23:59", utc(2026, 11, 14, 20, 52, 2));
        good("2024-02-29T00:00:00Z", utc(2024, 2, 29, 0, 0, 0));
        good("0001-01-01T00:00:00Z", utc(1, 1, 1, 0, 0, 0));
        good("9999-12-31T23:59:59Z", utc(9999, 12, 31, 23, 59, 59));

        for (const char *text : {"",
                                 "Z",
                                 "2026-11-15",
                                 "2026-11-15T20:51:02",
                                 "2026-11-15T20:51Z",
                                 "2026-11-15T20:51:02.5Z",
                                 "2026-11-15T20:51:02,5Z",
                                 "2026-11-15 20:51:02Z",
                                 "2026-11-15t20:51:02Z",
                                 "2026-11-15T20:51:02z",
                                 "20261115T205102Z",
                                 "2026-11-15T20:51:02+0530",
                                 "2026-11-15T20:51:02+05",
                                 "2026-11-15T20:51:02+05:3",
                                 "2026-11-15T20:51:02 05:30",
                                 "2026-11-15T20:51:02+24:00",
                                 "2026-11-15T20:51:02+05:60",
                                 "2026-11-15T20:51:02Z+05:30",
                                 "2026-11-15T20:51:02ZZ",
                                 " 2026-11-15T20:51:02Z",
                                 "2026-11-15T20:51:02Z ",
                                 "2026-11-15T20:51:02Z\n",
                                 "2026-02-29T00:00:00Z",
                                 "2026-02-30T00:00:00Z",
                                 "2026-13-01T00:00:00Z",
                                 "2026-00-01T00:00:00Z",
                                 "2026-01-00T00:00:00Z",
                                 "2026-01-32T00:00:00Z",
                                 "2026-11-15T24:00:00Z",
                                 "2026-11-15T20:60:00Z",
                                 "2016-12-31T23:59:60Z",
                                 "0000-01-01T00:00:00Z",
                                 "0001-01-01T00:00:00+00:01",
                                 "9999-12-31T23:59:59-00:01",
                                 "12026-11-15T20:51:02Z",
                                 "+2026-11-15T20:51:02Z",
                                 "-2026-11-15T20:51:02Z",
                                 "2026-W46-7T20:51:02Z",
                                 "2026-319T20:51:02Z",
                                 "Sun Nov 15 20:51:02 2026",
                                 "815863862",
                                 "٢٠٢٦-11-15T20:51:02Z",
                                 "2026‐11‐15T20:51:02Z"}) {
            QTest::newRow(text) << QString::fromUtf8(text) << QDateTime();
        }
    }

    void readsOneFormOnly()
    {
        QFETCH(const QString, text);
        QFETCH(const QDateTime, expected);

        const auto date = IsoDate::parse(text);

        QCOMPARE(date.has_value(), expected.isValid());
        if (date) {
            QCOMPARE(*date, expected);
            QCOMPARE(date->timeSpec(), Qt::UTC);
        }
    }
};

QTEST_GUILESS_MAIN(IsoDateTest)
#include "IsoDateTest.moc"
