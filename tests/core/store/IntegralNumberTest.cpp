// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/IntegralNumber.h"

#include <QTest>

#include <limits>

class IntegralNumberTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void integersInEveryForm_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<qint64>("expected");
        constexpr auto least = std::numeric_limits<qint64>::min();
        constexpr auto greatest = std::numeric_limits<qint64>::max();
        const auto row = [](const char *text, qint64 expected) {
            QTest::newRow(text) << QByteArray(text) << expected;
        };
        row("3", 3);
        row("-3", -3);
        row("0", 0);
        row("-0", 0);
        row("3.0", 3);
        row("-3.000", -3);
        row("3,0", 3); // a decimal comma
        row("3e0", 3);
        row("3E2", 300);
        row("3e+2", 300);
        row("30e-1", 3);
        row("0.3e1", 3);
        row("12.5e1", 125);
        row("0.00e5", 0);
        row("0e999999999999999999999", 0);
        row("100000000000000000000e-20", 1);
        row("9007199254740993.0", 9007199254740993);
        row("9223372036854775807", greatest);
        row("9223372036854775807.0", greatest);
        row("922337203685477580700e-2", greatest);
        row("-9223372036854775808", least);
        row("-9223372036854775808.0", least);
    }

    void integersInEveryForm()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const qint64, expected);

        QCOMPARE(integralNumber(text.toStdString()), std::optional(expected));
    }

    void anythingElseIsAbsent_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (const char *text : {"3.5",
                                 "0.1",
                                 "-0.5",
                                 "1e-1",
                                 "35e-1",
                                 "0.99999999999999999999999",
                                 "3.00000000000000000000000001",
                                 "1e300",
                                 "1e19",
                                 "-1e19",
                                 "9223372036854775808",
                                 "9223372036854775808.0",
                                 "-9223372036854775809.0",
                                 "1e99999999999999999999",
                                 "1e-99999999999999999999",
                                 "",
                                 "-",
                                 "e1",
                                 "1.2.3",
                                 "x",
                                 "1e5.0",
                                 "1e5x"}) {
            QTest::newRow(text) << QByteArray(text);
        }
    }

    void anythingElseIsAbsent()
    {
        QFETCH(const QByteArray, text);

        QCOMPARE(integralNumber(text.toStdString()), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(IntegralNumberTest)
#include "IntegralNumberTest.moc"
