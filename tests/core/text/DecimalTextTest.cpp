// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/DecimalText.h"
#include "tests/support/GermanNumbers.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

class DecimalTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void numbersAreRoundedToTheNearestText_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QString>("text");

        QTest::newRow("whole") << 2.0 << 1 << u"2.0"_s;
        QTest::newRow("no decimals") << -3.0 << 0 << u"-3"_s;
        QTest::newRow("down to even") << 0.125 << 2 << u"0.12"_s;
        QTest::newRow("up to even") << 0.375 << 2 << u"0.38"_s;
        QTest::newRow("below zero") << -0.625 << 2 << u"-0.62"_s;
        QTest::newRow("no tie in binary") << 0.35 << 1 << u"0.3"_s;
        QTest::newRow("nor here") << 1.45 << 1 << u"1.4"_s;
        QTest::newRow("carried") << 9.96 << 1 << u"10.0"_s;
        QTest::newRow("no grouping") << 1234567.5 << 1 << u"1234567.5"_s;
    }

    void numbersAreRoundedToTheNearestText()
    {
        QFETCH(double, value);
        QFETCH(int, decimals);
        const GermanNumbers german;

        QTEST(decimalText(value, decimals), "text");
    }

    void theLargestNumberHasAllItsDigits()
    {
        const auto text = decimalText(-std::numeric_limits<double>::max(), 2);

        QCOMPARE(text.size(), 1 + 309 + 1 + 2);
        QVERIFY(text.startsWith(u"-17976931348623157"_s) && text.endsWith(u".00"_s));
    }
};

QTEST_APPLESS_MAIN(DecimalTextTest)
#include "DecimalTextTest.moc"
