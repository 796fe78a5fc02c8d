// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/ByteCountText.h"

#include <QTest>

using namespace Qt::StringLiterals;

class ByteCountTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writesSizesAsFileManagersDo_data()
    {
        QTest::addColumn<qint64>("bytes");
        QTest::addColumn<QString>("text");

        QTest::newRow("nothing") << qint64(0) << u"Zero KB"_s;
        QTest::newRow("one") << qint64(1) << u"1 byte"_s;
        QTest::newRow("two") << qint64(2) << u"2 bytes"_s;
        QTest::newRow("the last in bytes") << qint64(999) << u"999 bytes"_s;
        QTest::newRow("the first KB") << qint64(1000) << u"1 KB"_s;
        QTest::newRow("KB without decimals") << qint64(1499) << u"1 KB"_s;
        QTest::newRow("KB rounded up") << qint64(1501) << u"2 KB"_s;
        QTest::newRow("the last KB") << qint64(999'499) << u"999 KB"_s;
        QTest::newRow("KB that round up to a MB") << qint64(999'500) << u"1 MB"_s;
        QTest::newRow("MB with one decimal") << qint64(12'340'000) << u"12.3 MB"_s;
        QTest::newRow("a trailing zero is dropped") << qint64(5'000'000) << u"5 MB"_s;
        QTest::newRow("MB that round up to a GB") << qint64(999'960'000) << u"1 GB"_s;
        QTest::newRow("GB with two decimals") << qint64(1'234'000'000) << u"1.23 GB"_s;
        QTest::newRow("one zero of two is dropped") << qint64(1'500'000'000) << u"1.5 GB"_s;
        QTest::newRow("tens keep their zero") << qint64(120'000'000'000) << u"120 GB"_s;
        QTest::newRow("TB") << qint64(2'010'000'000'000) << u"2.01 TB"_s;
        QTest::newRow("the largest there is") << std::numeric_limits<qint64>::max() << u"9.22 EB"_s;
    }

    void writesSizesAsFileManagersDo()
    {
        QFETCH(qint64, bytes);
        QFETCH(QString, text);

        QCOMPARE(byteCountText(bytes, QLocale::c()), text);
    }

    void takesTheDecimalSignOfTheLocale()
    {
        QCOMPARE(byteCountText(12'340'000, QLocale(QLocale::German)), u"12,3 MB"_s);
    }
};

QTEST_APPLESS_MAIN(ByteCountTextTest)
#include "ByteCountTextTest.moc"
