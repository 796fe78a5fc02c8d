// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/metadata/ImageMetadata.h"
#include "tests/support/GermanNumbers.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

class ImageMetadataTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void exposureTextIsAFractionOrADecimal_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("text");

        QTest::newRow("a usual time") << 0.004 << u"1/250s"_s;
        QTest::newRow("a third") << 0.3 << u"1/3s"_s;
        QTest::newRow("just below the threshold") << 0.39 << u"1/3s"_s;
        QTest::newRow("the threshold") << 0.4 << u"0.4s"_s;
        QTest::newRow("a half") << 0.5 << u"0.5s"_s;
        QTest::newRow("a whole number") << 2.0 << u"2.0s"_s;
        QTest::newRow("a long one") << 30.0 << u"30.0s"_s;
        QTest::newRow("the shortest") << 1.0 / 8000 << u"1/8000s"_s;
        QTest::newRow("an electronic shutter") << 1.0 / 180000 << u"1/180000s"_s;
        QTest::newRow("the last one below the threshold") << std::nextafter(0.4, 0) << u"1/3s"_s;
        QTest::newRow("a tie goes down to the even digit") << 1.25 << u"1.2s"_s;
        QTest::newRow("a tie goes up to the even digit") << 2.75 << u"2.8s"_s;
        QTest::newRow("another one down") << 3.25 << u"3.2s"_s;
        QTest::newRow("halves of the fraction too") << 1 / 12.5 << u"1/13s"_s;
        QTest::newRow("beyond every integer") << 0x1p-70 << u"1/1180591620717411303424s"_s;
    }

    void exposureTextIsAFractionOrADecimal()
    {
        QFETCH(double, seconds);

        QTEST(*ImageMetadata{.exposureTime = seconds}.exposureText(), "text");
    }

    void theLocaleDoesNotMatter_data() { exposureTextIsAFractionOrADecimal_data(); }

    void theLocaleDoesNotMatter()
    {
        const GermanNumbers german;
        exposureTextIsAFractionOrADecimal();
    }

    void noTimeAboveZeroHasNoText()
    {
        QVERIFY(!ImageMetadata().exposureText());
        QVERIFY(!ImageMetadata{.exposureTime = 0.0}.exposureText());
        QVERIFY(!ImageMetadata{.exposureTime = -1.0}.exposureText());
        QVERIFY(!ImageMetadata{.exposureTime = std::numeric_limits<double>::quiet_NaN()}
                     .exposureText());
    }

    void noFiniteTimeOrInverseHasNoText()
    {
        constexpr auto infinity = std::numeric_limits<double>::infinity();
        constexpr auto denormal = std::numeric_limits<double>::denorm_min();

        QVERIFY(!ImageMetadata{.exposureTime = infinity}.exposureText());
        QVERIFY(!ImageMetadata{.exposureTime = -infinity}.exposureText());
        QVERIFY(!ImageMetadata{.exposureTime = denormal}.exposureText());
    }

    void equalityComparesEveryField()
    {
        ImageMetadata one;
        one.fuji.emplace().grain = u"Weak"_s;

        auto other = one;
        QCOMPARE(other, one);
        other.fuji->grain = u"Strong"_s;

        QVERIFY(other != one);
    }
};

QTEST_GUILESS_MAIN(ImageMetadataTest)
#include "ImageMetadataTest.moc"
