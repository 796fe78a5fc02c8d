// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/VersionOrder.h"

#include <QTest>

using namespace Qt::StringLiterals;

class VersionOrderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void versionsAreOrdered_data()
    {
        QTest::addColumn<QString>("older");
        QTest::addColumn<QString>("newer");
        QTest::newRow("by the last number") << u"1.0"_s << u"1.1"_s;
        QTest::newRow("by the first number") << u"1.9"_s << u"2.0"_s;
        QTest::newRow("numbers count by value") << u"1.9"_s << u"1.10"_s;
        QTest::newRow("a zero in between") << u"0.0.1"_s << u"0.1"_s;
        QTest::newRow("one number more") << u"0.1"_s << u"0.1.2"_s;
        QTest::newRow("a beta of the next version") << u"1.5.5"_s << u"1.5.6b1"_s;
        QTest::newRow("betas by their number") << u"1.0b9"_s << u"1.0b10"_s;
        QTest::newRow("a beta without a number") << u"1.0b"_s << u"1.0b2"_s;
        QTest::newRow("alpha before beta") << u"1.0a2"_s << u"1.0b1"_s;
        QTest::newRow("a beta before its release") << u"1.0b3"_s << u"1.0"_s;
        QTest::newRow("a candidate before its release") << u"1.0rc"_s << u"1.0"_s;
        QTest::newRow("a beta before its release of more numbers") << u"1.0b3"_s << u"1.0.0"_s;
        QTest::newRow("the release before a beta of the next") << u"0.9"_s << u"1.0a1"_s;
        QTest::newRow("builds in brackets") << u"1.0 (1234)"_s << u"1.0 (1235)"_s;
        QTest::newRow("a build before the next version") << u"3.3 (5847)"_s << u"3.3.1b1 (5902)"_s;
        QTest::newRow("dates") << u"202610251627"_s << u"202611051041"_s;
        QTest::newRow("numbers that no integer holds")
            << u"99999999999999999999999998"_s << u"99999999999999999999999999"_s;
        QTest::newRow("nothing is older than everything") << QString() << u"0.1"_s;
        QTest::newRow("what begins with letters is older") << u"beta"_s << u"0"_s;
        QTest::newRow("versions differ before a dash") << u"1.5.5-f35d3e2"_s << u"1.5.6-0252311"_s;
    }

    void versionsAreOrdered()
    {
        QFETCH(const QString, older);
        QFETCH(const QString, newer);

        QVERIFY(compareVersions(older, newer) < 0);
        QVERIFY(compareVersions(newer, older) > 0);
    }

    void versionsAreEqual_data()
    {
        QTest::addColumn<QString>("one");
        QTest::addColumn<QString>("other");
        QTest::newRow("the same text") << u"1.0"_s << u"1.0"_s;
        QTest::newRow("zeros that are left out") << u"1"_s << u"1.0.0"_s;
        QTest::newRow("zeros before a beta") << u"1.0pre1"_s << u"1.0.0pre1"_s;
        QTest::newRow("zeros before a build") << u"3.3 (5847)"_s << u"3.3.0 (5847)"_s;
        QTest::newRow("leading zeros") << u"1.02"_s << u"1.2"_s;
        QTest::newRow("all behind a dash") << u"1.5.5-335d3e2"_s << u"1.5.5-a655360"_s;
        QTest::newRow("any separator") << u"1.5b 2"_s << u"1.5b_2"_s;
        QTest::newRow("nothing") << QString() << QString();
    }

    void versionsAreEqual()
    {
        QFETCH(const QString, one);
        QFETCH(const QString, other);

        QVERIFY(compareVersions(one, other) == 0);
        QVERIFY(compareVersions(other, one) == 0);
    }

    void prereleasesAreKnown_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<bool>("isOne");
        QTest::newRow("a release") << u"1.2.3"_s << false;
        QTest::newRow("a beta") << u"1.2b1"_s << true;
        QTest::newRow("a beta behind a dash") << u"1.2-beta.1"_s << true;
        QTest::newRow("a candidate behind a space") << u"1.2 rc 1"_s << true;
        QTest::newRow("a beta in brackets") << u"1.2 (beta)"_s << true;
        QTest::newRow("a build in brackets") << u"1.2 (1234)"_s << false;
        QTest::newRow("a revision behind a dash") << u"1.2-3"_s << false;
        QTest::newRow("a build behind a plus") << u"1.2+linux"_s << false;
        QTest::newRow("a name") << u"Kestle 2"_s << false;
        QTest::newRow("nothing") << QString() << false;
    }

    void prereleasesAreKnown()
    {
        QFETCH(const QString, version);
        QFETCH(const bool, isOne);

        QCOMPARE(isPrerelease(version), isOne);
    }
};

QTEST_GUILESS_MAIN(VersionOrderTest)
#include "VersionOrderTest.moc"
