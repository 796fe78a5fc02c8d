// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/metadata/FujiMakerNote.h"
#include "tests/support/GermanNumbers.h"

#include <QTest>

using namespace Qt::StringLiterals;

using Note = PropertyDictionary;
using Text = std::optional<QString>;

Q_DECLARE_METATYPE(FujiSettings)

namespace {

std::optional<FujiSettings> parse(const Note &note)
{
    return FujiMakerNote::parse({{u"{MakerFuji}"_s, note}});
}

QVariant integer(qint64 value)
{
    return value;
}

QVariantList pair(qint64 red, qint64 blue)
{
    return {red, blue};
}

} // namespace

class FujiMakerNoteTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyCodeHasItsText_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<qint64>("code");
        QTest::addColumn<FujiSettings>("settings");

        const auto film = [](qint64 code, const QString &text) {
            QTest::addRow("film 0x%llx", code)
                << u"FilmMode"_s << code << FujiSettings{.filmSimulation = text};
        };
        film(0x000, u"Provia"_s);
        film(0x200, u"Velvia"_s);
        film(0x300, u"Astia"_s);
        film(0x500, u"Pro Neg. Std"_s);
        film(0x501, u"Pro Neg. Hi"_s);
        film(0x600, u"Classic Chrome"_s);
        film(0x700, u"Eterna"_s);
        film(0x800, u"Classic Negative"_s);
        film(0x900, u"Bleach Bypass"_s);
        film(0xA00, u"Nostalgic Neg."_s);
        film(0xB00, u"Reala ACE"_s);

        const auto monochrome = [](qint64 code, const QString &text) {
            QTest::addRow("monochrome 0x%llx", code)
                << u"Saturation"_s << code << FujiSettings{.filmSimulation = text};
        };
        monochrome(0x300, u"Monochrome"_s);
        monochrome(0x301, u"Monochrome+R"_s);
        monochrome(0x302, u"Monochrome+Ye"_s);
        monochrome(0x303, u"Monochrome+G"_s);
        monochrome(0x310, u"Sepia"_s);
        monochrome(0x500, u"Acros"_s);
        monochrome(0x501, u"Acros+R"_s);
        monochrome(0x502, u"Acros+Ye"_s);
        monochrome(0x503, u"Acros+G"_s);

        QTest::newRow("grain weak")
            << u"GrainEffectRoughness"_s << qint64(0x20) << FujiSettings{.grain = u"Weak"_s};
        QTest::newRow("grain strong")
            << u"GrainEffectRoughness"_s << qint64(0x40) << FujiSettings{.grain = u"Strong"_s};
        QTest::newRow("grain by its older name")
            << u"GrainEffect"_s << qint64(0x40) << FujiSettings{.grain = u"Strong"_s};
        QTest::newRow("colour chrome weak")
            << u"ColorChromeEffect"_s << qint64(0x20) << FujiSettings{.colorChrome = u"Weak"_s};
        QTest::newRow("colour chrome strong")
            << u"ColorChromeEffect"_s << qint64(0x40) << FujiSettings{.colorChrome = u"Strong"_s};
        QTest::newRow("colour chrome blue weak")
            << u"ColorChromeFXBlue"_s << qint64(0x20) << FujiSettings{.colorChromeBlue = u"Weak"_s};
        QTest::newRow("colour chrome blue strong") << u"ColorChromeFXBlue"_s << qint64(0x40)
                                                   << FujiSettings{.colorChromeBlue = u"Strong"_s};
        QTest::newRow("dynamic range developed") << u"DevelopmentDynamicRange"_s << qint64(400)
                                                 << FujiSettings{.dynamicRange = u"DR400"_s};
        QTest::newRow("dynamic range automatic")
            << u"DynamicRangeSetting"_s << qint64(0) << FujiSettings{.dynamicRange = u"DR Auto"_s};
    }

    void everyCodeHasItsText()
    {
        QFETCH(QString, key);
        QFETCH(qint64, code);
        QFETCH(FujiSettings, settings);

        QVERIFY(parse({{key, code}}) == settings);
    }

    void codesWithoutATextSayNothing_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");

        QTest::newRow("unknown film") << u"FilmMode"_s << integer(0x400);
        QTest::newRow("colour saturation") << u"Saturation"_s << integer(0);
        QTest::newRow("dynamic range by hand") << u"DynamicRangeSetting"_s << integer(1);
        QTest::newRow("highlight at zero") << u"HighlightTone"_s << integer(0);
        QTest::newRow("shadow at zero") << u"ShadowTone"_s << integer(0);
        QTest::newRow("grain off") << u"GrainEffectRoughness"_s << integer(0);
        QTest::newRow("grain size alone") << u"GrainEffectSize"_s << integer(0x20);
        QTest::newRow("colour chrome off") << u"ColorChromeEffect"_s << integer(0);
        QTest::newRow("colour chrome blue off") << u"ColorChromeFXBlue"_s << integer(0);
        QTest::newRow("no white balance shift")
            << u"WhiteBalanceFineTune"_s << QVariant(pair(0, 0));
        QTest::newRow("three shifts")
            << u"WhiteBalanceFineTune"_s << QVariant(pair(20, 20) + QVariantList{qint64(20)});
        QTest::newRow("one shift") << u"WhiteBalanceFineTune"_s << QVariant(QVariantList{20LL});
        QTest::newRow("shift as a number") << u"WhiteBalanceFineTune"_s << integer(20);
        QTest::newRow("shift with a fraction")
            << u"WhiteBalanceFineTune"_s << QVariant(QVariantList{20.0, 20LL});
        QTest::newRow("film as a double") << u"FilmMode"_s << QVariant(512.0);
        QTest::newRow("film as a text") << u"FilmMode"_s << QVariant(u"512"_s);
        QTest::newRow("unknown key") << u"Sharpness"_s << integer(3);
    }

    void codesWithoutATextSayNothing()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, value);

        QVERIFY(!parse({{key, value}}));
    }

    void aFileOfAnotherMakeHasNoSettings()
    {
        QVERIFY(!FujiMakerNote::parse({}));
        QVERIFY(!FujiMakerNote::parse({{u"{Exif}"_s, PropertyDictionary()}}));
        QVERIFY(!FujiMakerNote::parse({{u"{MakerFuji}"_s, u"no dictionary"_s}}));
    }

    void anEmptyNoteHasNoSettings() { QVERIFY(!parse({})); }

    void monochromeWinsOverTheFilm()
    {
        const auto acros = parse({{u"Saturation"_s, 0x500LL}, {u"FilmMode"_s, 0LL}});
        const auto chrome = parse({{u"Saturation"_s, 0LL}, {u"FilmMode"_s, 0x600LL}});

        QCOMPARE(acros->filmSimulation, Text(u"Acros"_s));
        QCOMPARE(chrome->filmSimulation, Text(u"Classic Chrome"_s));
    }

    void anUnknownFilmLeavesTheOtherFields()
    {
        const auto settings = parse({{u"FilmMode"_s, 0x400LL}, {u"ColorChromeEffect"_s, 0x40LL}});

        QVERIFY(settings == FujiSettings{.colorChrome = u"Strong"_s});
    }

    void theDevelopedDynamicRangeWinsOverTheSetting()
    {
        const auto settings =
            parse({{u"DevelopmentDynamicRange"_s, 200LL}, {u"DynamicRangeSetting"_s, 0LL}});

        QCOMPARE(settings->dynamicRange, Text(u"DR200"_s));
    }

    void tonesAreSignedSteps_data()
    {
        QTest::addColumn<qint64>("stored");
        QTest::addColumn<QString>("text");

        QTest::newRow("a step brighter") << qint64(-16) << u"+1"_s;
        QTest::newRow("two steps darker") << qint64(32) << u"-2"_s;
        QTest::newRow("half a step brighter") << qint64(-8) << u"+0.50"_s;
        QTest::newRow("a step and a half darker") << qint64(24) << u"-1.50"_s;
        QTest::newRow("four steps") << qint64(-64) << u"+4"_s;
        QTest::newRow("a quarter") << qint64(-4) << u"+0.25"_s;
        QTest::newRow("a tie goes down to the even digit") << qint64(-2) << u"+0.12"_s;
        QTest::newRow("a tie goes up to the even digit") << qint64(-6) << u"+0.38"_s;
        QTest::newRow("a tie below zero") << qint64(10) << u"-0.62"_s;
        QTest::newRow("thousands") << qint64(-16016) << u"+1001"_s;
    }

    void tonesAreSignedSteps()
    {
        QFETCH(qint64, stored);

        const auto highlight = parse({{u"HighlightTone"_s, stored}});
        const auto shadow = parse({{u"ShadowTone"_s, stored}});

        QTEST(*highlight->highlightTone, "text");
        QTEST(*shadow->shadowTone, "text");
    }

    void theLocaleDoesNotMatterToTones_data() { tonesAreSignedSteps_data(); }

    void theLocaleDoesNotMatterToTones()
    {
        const GermanNumbers german;
        tonesAreSignedSteps();
    }

    void grainHasItsSizeWhereTheSizeIsKnown_data()
    {
        QTest::addColumn<qint64>("roughness");
        QTest::addColumn<qint64>("size");
        QTest::addColumn<QString>("text");

        QTest::newRow("strong large") << qint64(0x40) << qint64(0x20) << u"Strong/Large"_s;
        QTest::newRow("weak small") << qint64(0x20) << qint64(0x10) << u"Weak/Small"_s;
        QTest::newRow("size zero") << qint64(0x40) << qint64(0) << u"Strong"_s;
    }

    void grainHasItsSizeWhereTheSizeIsKnown()
    {
        QFETCH(qint64, roughness);
        QFETCH(qint64, size);

        const auto settings =
            parse({{u"GrainEffectRoughness"_s, roughness}, {u"GrainEffectSize"_s, size}});

        QTEST(*settings->grain, "text");
    }

    void grainThatIsOffHasNoTextWhateverItsSize()
    {
        QVERIFY(!parse({{u"GrainEffectRoughness"_s, 0LL}, {u"GrainEffectSize"_s, 0x20LL}}));
    }

    void theOlderGrainCountsOnlyWithoutTheNewer()
    {
        QVERIFY(!parse({{u"GrainEffectRoughness"_s, 0LL}, {u"GrainEffect"_s, 0x40LL}}));
    }

    void whiteBalanceIsShownInSteps_data()
    {
        QTest::addColumn<qint64>("red");
        QTest::addColumn<qint64>("blue");
        QTest::addColumn<QString>("text");

        QTest::newRow("both") << qint64(40) << qint64(-60) << u"R+2 B-3"_s;
        QTest::newRow("red alone") << qint64(20) << qint64(0) << u"R+1 B0"_s;
        QTest::newRow("less than a step") << qint64(10) << qint64(0) << u"R0 B0"_s;
        QTest::newRow("less than a step both ways") << qint64(10) << qint64(-10) << u"R0 B0"_s;
        QTest::newRow("truncated toward zero") << qint64(-39) << qint64(39) << u"R-1 B+1"_s;
        QTest::newRow("just below a step") << qint64(-19) << qint64(19) << u"R0 B0"_s;
        QTest::newRow("thousands") << qint64(20020) << qint64(-20020) << u"R+1001 B-1001"_s;
    }

    void whiteBalanceIsShownInSteps()
    {
        QFETCH(qint64, red);
        QFETCH(qint64, blue);

        const auto settings = parse({{u"WhiteBalanceFineTune"_s, pair(red, blue)}});

        QTEST(*settings->whiteBalanceShift, "text");
    }

    void theLocaleDoesNotMatterToTheWhiteBalance_data() { whiteBalanceIsShownInSteps_data(); }

    void theLocaleDoesNotMatterToTheWhiteBalance()
    {
        const GermanNumbers german;
        whiteBalanceIsShownInSteps();
    }
};

QTEST_GUILESS_MAIN(FujiMakerNoteTest)
#include "FujiMakerNoteTest.moc"
