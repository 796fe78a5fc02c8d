// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/MetadataTexts.h"

#include "core/metadata/ImageMetadata.h"
#include "tests/support/GermanNumbers.h"

#include <QTest>

using namespace Qt::StringLiterals;

class MetadataTextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyValueHasItsText()
    {
        const ImageMetadata meta{.pixelWidth = 6240,
                                 .pixelHeight = 4160,
                                 .aperture = 2.8,
                                 .exposureTime = 0.004,
                                 .iso = 400,
                                 .lensModel = u"XF35mmF1.4 R"_s,
                                 .fuji = FujiSettings{.filmSimulation = u"Acros+R"_s,
                                                      .dynamicRange = u"DR Auto"_s,
                                                      .whiteBalanceShift = u"R+1 B-2"_s,
                                                      .highlightTone = u"-0.50"_s,
                                                      .shadowTone = u"+2"_s,
                                                      .grain = u"Strong/Large"_s,
                                                      .colorChrome = u"Strong"_s,
                                                      .colorChromeBlue = u"Weak"_s}};

        QCOMPARE(MetadataTexts::capture(meta),
                 (QStringList{u"6240×4160"_s, u"ƒ/2.8"_s, u"1/250s"_s, u"ISO 400"_s}));
        QCOMPARE(MetadataTexts::lens(meta), u"XF35mmF1.4 R"_s);
        QCOMPARE(MetadataTexts::fuji(meta),
                 (QStringList{u"Acros+R"_s, u"DR Auto"_s, u"WB R+1 B-2"_s, u"H-0.50"_s, u"S+2"_s,
                              u"Grain Strong/Large"_s, u"CC Strong"_s, u"CCB Weak"_s}));
    }

    void whatIsMissingLeavesNoText()
    {
        QVERIFY(MetadataTexts::capture({}).isEmpty());
        QVERIFY(MetadataTexts::lens({}).isEmpty());
        QVERIFY(MetadataTexts::fuji({}).isEmpty());
        QVERIFY(MetadataTexts::fuji({.fuji = FujiSettings()}).isEmpty());
        QCOMPARE(MetadataTexts::capture({.aperture = 11}), QStringList(u"ƒ/11.0"_s));
    }

    void aTieOfTheApertureGoesToTheEvenDigit()
    {
        const GermanNumbers german;

        QCOMPARE(MetadataTexts::capture({.aperture = 1.25}), QStringList(u"ƒ/1.2"_s));
        QCOMPARE(MetadataTexts::capture({.aperture = 6.75}), QStringList(u"ƒ/6.8"_s));
        QCOMPARE(MetadataTexts::capture({.aperture = 1.4}), QStringList(u"ƒ/1.4"_s));
    }

    void thePixelSizeNeedsBothNumbers()
    {
        QVERIFY(MetadataTexts::capture({.pixelWidth = 6240}).isEmpty());
        QVERIFY(MetadataTexts::capture({.pixelHeight = 4160}).isEmpty());
    }
};

QTEST_APPLESS_MAIN(MetadataTextsTest)
#include "MetadataTextsTest.moc"
