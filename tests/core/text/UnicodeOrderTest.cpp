// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/text/UnicodeOrder.h"

#include <QTest>

using namespace Qt::StringLiterals;

class UnicodeOrderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void order_data()
    {
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        QTest::addColumn<int>("expected");

        QTest::newRow("equal") << u"A"_s << u"A"_s << 0;
        QTest::newRow("bytes for ascii") << u"DSCF0002"_s << u"DSCF0010"_s << -1;
        QTest::newRow("upper before lower") << u"Z"_s << u"a"_s << -1;
        QTest::newRow("prefix first") << u"A"_s << u"AB"_s << -1;
        QTest::newRow("empty first") << u""_s << u"A"_s << -1;
        QTest::newRow("composed equals decomposed") << u"caf\u00E9"_s << u"cafe\u0301"_s << 0;
        QTest::newRow("composed letter after ascii") << u"caf\u00E9"_s << u"cafz"_s << 1;
        QTest::newRow("code points, not UTF-16 units") << u"\uFF21"_s << u"\U0001F600"_s << -1;
    }

    void order()
    {
        QFETCH(const QString, left);
        QFETCH(const QString, right);
        QFETCH(const int, expected);

        const auto sign = [](int value) { return (value > 0) - (value < 0); };

        QCOMPARE(sign(compareInUnicodeOrder(left, right)), expected);
        QCOMPARE(sign(compareInUnicodeOrder(right, left)), -expected);
    }

    void upperCaseIsFullAndIndependentOfTheLocale()
    {
        QLocale::setDefault(QLocale(QLocale::Turkish));

        QCOMPARE(upperCased(u"dscf0001"_s), u"DSCF0001"_s);
        QCOMPARE(upperCased(u"i"_s), u"I"_s);
        QCOMPARE(upperCased(u"stra\u00DFe"_s), u"STRASSE"_s);
        QCOMPARE(upperCased(u"\uFB01"_s), u"FI"_s);
    }
};

QTEST_GUILESS_MAIN(UnicodeOrderTest)
#include "UnicodeOrderTest.moc"
