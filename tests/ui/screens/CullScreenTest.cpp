// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

using namespace Qt::StringLiterals;

class CullScreenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thePartsLieWhereTheyBelong_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("the smallest window") << QSize(1000, 700);
        QTest::newRow("a large window") << QSize(1920, 1200);
    }

    void thePartsLieWhereTheyBelong()
    {
        QFETCH(QSize, size);
        WindowBench bench(size);
        bench.metadata->otherwise = ImageMetadata{.iso = 400};
        bench.cull(ScreenBench::shots(60));
        bench.defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        bench.key(Qt::Key_X);
        QTRY_VERIFY(bench.find(u"badge"_s));

        const auto strip = WindowBench::rectOf(bench.find(u"strip"_s));
        const auto band = WindowBench::rectOf(bench.find(u"filmstrip"_s));
        const auto area = WindowBench::rectOf(bench.find(u"imageArea"_s));
        const auto badge = WindowBench::rectOf(bench.find(u"badge"_s));
        const auto bar = WindowBench::rectOf(bench.find(u"exifBar"_s));
        const auto nav = WindowBench::rectOf(bench.find(u"processNav"_s));
        QCOMPARE(strip.height(), 56 + 8);
        QCOMPARE(band.bottom(), size.height());
        QCOMPARE(band.width(), size.width());
        QCOMPARE(area, QRectF(0, 32, size.width(), band.top() - 32));
        QCOMPARE(badge.left(), 16);
        QCOMPARE(badge.bottom(), area.bottom() - 16);
        QCOMPARE(bar.topLeft(), area.topLeft());
        QCOMPARE(bar.width(), area.width());
        QCOMPARE(nav.topRight(), QPointF(size.width(), 32));
    }

    void aPhotoIsShownAsSoonAsItIsThere()
    {
        WindowBench bench;
        bench.pictures.screensAreHeld = true;
        bench.pictures.thumbnailsAreHeld = true;
        bench.cull(ScreenBench::shots(2));
        QTRY_VERIFY(bench.find(u"spinner"_s));

        bench.letGo();

        QTRY_VERIFY(!bench.find(u"spinner"_s));
        auto *picture = bench.find(u"picture"_s);
        QVERIFY(picture);
        QTRY_VERIFY(picture->property("smoothScaling").toBool());
        const auto top = WindowBench::rectOf(picture).center().toPoint();
        const QColor sky = bench.window->grabWindow().pixelColor(top.x(), 100);
        QVERIFY(std::abs(sky.hue() - MadeUpPictures::hueOf("DSCF0001.JPG")) < 12);
    }

    void theBadgeFollowsTheDecision()
    {
        WindowBench bench;
        bench.defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        bench.cull(ScreenBench::shots(3));
        bench.defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        QVERIFY(!bench.find(u"badge"_s));

        bench.key(Qt::Key_X);
        QVERIFY(bench.find(u"badge"_s));
        QCOMPARE(bench.text(u"rejectCount"_s), u"1 rejected"_s);
        QCOMPARE(bench.find(u"rejectCount"_s)->property("color").value<QColor>(),
                 QColor(0xff, 0x45, 0x3a));

        bench.key(Qt::Key_Z, Qt::ControlModifier);
        QTRY_VERIFY(!bench.find(u"badge"_s));
        QCOMPARE(bench.text(u"rejectCount"_s), u"0 rejected"_s);
        QVERIFY(bench.find(u"rejectCount"_s)->property("color").value<QColor>().alphaF() < 0.7);
    }

    void theInformationBarShowsNameAndSettings()
    {
        WindowBench bench;
        bench.metadata->byName["DSCF0001.JPG"] =
            ImageMetadata{.pixelWidth = 6240, .pixelHeight = 4160, .iso = 400};
        bench.cull(ScreenBench::shots(2));

        QTRY_VERIFY(bench.texts().contains(u"ISO 400"_s));
        QVERIFY(bench.texts().contains(u"6240×4160"_s));
        QCOMPARE(bench.text(u"exifName"_s), u"DSCF0001.JPG"_s);

        bench.key(Qt::Key_Right);
        QCOMPARE(bench.text(u"exifName"_s), u"DSCF0002.JPG"_s);
        QTRY_VERIFY(!bench.texts().contains(u"ISO 400"_s));

        bench.key(Qt::Key_I);
        QTRY_VERIFY(!bench.find(u"exifBar"_s));
    }

    void aLongLensNameEndsBeforeTheStepIndicator()
    {
        WindowBench bench;
        ImageMetadata meta{.pixelWidth = 6240, .pixelHeight = 4160, .aperture = 2.8, .iso = 400};
        meta.lensModel = QString(200, u'L');
        meta.fuji = FujiSettings{.filmSimulation = u"Acros+R"_s};
        bench.metadata->otherwise = meta;
        bench.cull(ScreenBench::shots(1));
        QTRY_VERIFY(bench.find(u"exifLens"_s));

        const auto nav = WindowBench::rectOf(bench.find(u"processNav"_s));
        const auto lens = bench.find(u"exifLens"_s);
        QVERIFY(WindowBench::rectOf(lens).right() < nav.left());
        QVERIFY(lens->width() > 0);
        QVERIFY(bench.texts().contains(u"Acros+R"_s));
    }

    void aClipShowsItsPosterAndIgnoresZoom()
    {
        WindowBench bench;
        bench.cull({"DSCF0001.MOV", "DSCF0002.JPG"});
        QTRY_VERIFY(bench.find(u"poster"_s));
        QVERIFY(!bench.find(u"picture"_s));
        QVERIFY(!bench.find(u"spinner"_s));

        bench.key(Qt::Key_Z);
        bench.appState.setZoomed(true);

        QVERIFY(!bench.find(u"zoom"_s));
        QVERIFY(bench.find(u"poster"_s));
    }

    void zoomIsPannedByKeysAndDragsAndStartsAnew()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(2));
        bench.key(Qt::Key_Z);
        QTRY_VERIFY(bench.find(u"pixels"_s));
        QTRY_VERIFY(!bench.find(u"spinner"_s));

        bench.key(Qt::Key_Left);
        QCOMPARE(bench.appState.zoomPan(), QSizeF(80, 0));
        drag(bench, {30, -12});
        QCOMPARE(bench.appState.zoomPan(), QSizeF(110, -12));
        drag(bench, {6, 5});
        QCOMPARE(bench.appState.zoomPan(), QSizeF(110, -12));

        bench.key(Qt::Key_Z);
        QTRY_VERIFY(!bench.find(u"zoom"_s));
        bench.key(Qt::Key_Z);
        QTRY_VERIFY(bench.find(u"zoom"_s));
        QCOMPARE(bench.appState.zoomPan(), QSizeF(0, 0));
    }

    void theStripCentresTheCurrentItem()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(60));

        bench.appState.selectItem(30);

        QTRY_COMPARE(qRound(stripX(bench)), qRound(30 * 60 + 28 - 500.0));
        QCOMPARE(bench.text(u"position"_s), u"31 / 60"_s);
    }

    void scrollingTheStripDoesNotMoveAndTheNextStepCentresAgain()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(60));
        bench.appState.selectItem(30);
        QTRY_COMPARE(qRound(stripX(bench)), 1328);

        const auto strip = WindowBench::rectOf(bench.find(u"strip"_s)).center();
        QWheelEvent wheel(strip, bench.window->mapToGlobal(strip), {}, {0, -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(bench.window, &wheel);
        QTRY_VERIFY(stripX(bench) > 1328);
        QCOMPARE(bench.appState.session()->currentIndex(), 30);

        bench.key(Qt::Key_Right);
        QTRY_COMPARE(qRound(stripX(bench)), 1388);
    }

    void aClickSelectsAnItemAndTakesNoFocus()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(60));
        QTRY_VERIFY(bench.find(u"border"_s)); // the strip has its items
        auto *focused = bench.window->activeFocusItem();
        const auto strip = WindowBench::rectOf(bench.find(u"strip"_s));

        QTest::mouseClick(bench.window, Qt::LeftButton, {},
                          QPointF(strip.left() + 8 + 3 * 60 + 28, strip.center().y()).toPoint());

        QCOMPARE(bench.appState.session()->currentIndex(), 3);
        QCOMPARE(bench.window->activeFocusItem(), focused);
    }

    void aClickOnTheCurrentItemStillLeavesTheZoom()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(3));
        bench.key(Qt::Key_Z);
        QVERIFY(bench.appState.zoomed());
        QTRY_VERIFY(bench.find(u"border"_s)); // the strip has its items
        const auto strip = WindowBench::rectOf(bench.find(u"strip"_s));

        QTest::mouseClick(bench.window, Qt::LeftButton, {},
                          QPointF(strip.left() + 8 + 28, strip.center().y()).toPoint());

        QVERIFY(!bench.appState.zoomed());
    }

    void theStepsLeadBackAndForthWithoutTakingTheKeys()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(3));

        bench.click(u"reviewStep"_s);
        QTRY_COMPARE(bench.appState.phase(), Phase::review());
        bench.click(u"cullStep"_s);
        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
        bench.key(Qt::Key_Right);
        QCOMPARE(bench.appState.session()->currentIndex(), 1);
        bench.click(u"cardStep"_s);
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(true));
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
    }

    void theMenuHasTheCommandsAndTheKeysWhileItIsOpen()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(3));

        bench.click(u"menuButton"_s);
        QTRY_VERIFY(bench.window->property("popupOpen").toBool());
        bench.key(Qt::Key_X);
        QCOMPARE(bench.appState.session()->rejectedCount(), 0);
        bench.key(Qt::Key_Escape);
        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());
        QCOMPARE(bench.appState.phase(), Phase::culling());
        bench.key(Qt::Key_X);
        QCOMPARE(bench.appState.session()->rejectedCount(), 1);
    }

private:
    static qreal stripX(const WindowBench &bench)
    {
        return bench.find(u"strip"_s)->property("contentX").toReal();
    }

    static void drag(const WindowBench &bench, QPoint by)
    {
        const QPoint from(500, 350);
        QTest::mousePress(bench.window, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step) {
            QTest::mouseMove(bench.window, from + by * step / 10);
        }
        QTest::mouseRelease(bench.window, Qt::LeftButton, {}, from + by);
    }
};

QTEST_MAIN(CullScreenTest)
#include "CullScreenTest.moc"
