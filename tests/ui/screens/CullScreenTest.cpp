// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

using namespace Qt::StringLiterals;

class CullScreenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aSessionWithoutItemsShowsTheSpinnerOnBlack()
    {
        WindowBench bench;
        const QQmlComponent component(&bench.engine, QUrl(u"qrc:/Kestle/screens/CullScreen.qml"_s));
        const std::unique_ptr<QObject> made(
            const_cast<QQmlComponent &>(component).createWithInitialProperties(
                {{u"appState"_s, QVariant::fromValue(&bench.appState)},
                 {u"width"_s, 1000},
                 {u"height"_s, 700}}));
        auto *const screen = qobject_cast<QQuickItem *>(made.get());
        QVERIFY2(screen, qPrintable(component.errorString()));
        screen->setParentItem(bench.window->contentItem());

        QVERIFY(bench.find(u"spinner"_s));
        for (const auto &absent : {u"badge"_s, u"exifBar"_s, u"brokenPicture"_s, u"zoom"_s}) {
            QVERIFY(!bench.find(absent));
        }
        const auto middle = WindowBench::rectOf(bench.find(u"imageArea"_s)).center();
        const auto off = WindowBench::rectOf(bench.find(u"spinner"_s)).center() - middle;
        QVERIFY(std::abs(off.x()) <= 0.5 && std::abs(off.y()) <= 0.5);
        QCOMPARE(bench.window->grabWindow().pixelColor(60, 200), QColor(Qt::black));
    }

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

    void aRunOfCachedItemsIsSharpInEveryFrameWithoutTheSpinner()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(9));
        for (int index = 0; index < 9; ++index) {
            QTRY_VERIFY(!bench.pipeline.cachedScreenImage(bench.item(index)).isNull());
        }
        QTRY_VERIFY(bench.find(u"picture"_s)->property("smoothScaling").toBool());
        QStringList faults;
        const auto look = [&] {
            const auto index = bench.appState.session()->currentIndex();
            const auto shown = bench.find(u"picture"_s)->property("image").value<QImage>();
            if (bench.find(u"spinner"_s) ||
                !bench.find(u"picture"_s)->property("smoothScaling").toBool() ||
                shown.cacheKey() !=
                    bench.pipeline.cachedScreenImage(bench.item(index)).cacheKey()) {
                faults.append(QString::number(index));
            }
        };
        const auto watch = connect(bench.window, &QQuickWindow::beforeSynchronizing, this, look);
        const QSignalSpy frames(bench.window, &QQuickWindow::afterRendering);

        for (int step = 1; step < 9; ++step) {
            bench.key(Qt::Key_Right);
            const auto before = frames.size();
            QTRY_VERIFY(frames.size() > before);
        }

        disconnect(watch);
        QCOMPARE(faults, QStringList());
        QCOMPARE(bench.appState.session()->currentIndex(), 8);
    }

    void anItemThatIsNotCachedIsBlurredFirstAndThenSharp()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(40));
        QTRY_VERIFY(bench.find(u"picture"_s)->property("smoothScaling").toBool());
        bench.pictures.screensAreHeld = true;

        bench.appState.selectItem(39);

        QTRY_VERIFY(!bench.find(u"picture"_s)->property("smoothScaling").toBool());
        QCOMPARE(bench.find(u"picture"_s)->property("image").value<QImage>().width(), 256);
        bench.letGo();
        QTRY_VERIFY(bench.find(u"picture"_s)->property("smoothScaling").toBool());
        QCOMPARE(bench.find(u"picture"_s)->property("image").value<QImage>().width(), 1200);
    }

    void aStepShowsItsNamePlaceAndBadgeInTheNextFrame()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(20));
        bench.defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        bench.key(Qt::Key_X);
        QTRY_VERIFY(bench.find(u"badge"_s));
        bench.pictures.screensAreHeld = true;
        bench.pictures.thumbnailsAreHeld = true;
        QStringList frame;
        const auto look = [&] {
            if (frame.isEmpty()) {
                frame = {bench.text(u"exifName"_s), bench.text(u"position"_s),
                         bench.find(u"badge"_s) ? u"badge"_s : u"no badge"_s};
            }
        };
        const auto watch = connect(bench.window, &QQuickWindow::beforeSynchronizing, this, look);

        bench.key(Qt::Key_Right);
        QTRY_VERIFY(!frame.isEmpty());

        disconnect(watch);
        QCOMPARE(frame, QStringList({u"DSCF0002.JPG"_s, u"2 / 20"_s, u"no badge"_s}));
    }

    void aPictureThatCannotBeDecodedIsNotMistakenForTheOneBefore()
    {
        WindowBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0002-BROKEN.JPG", "DSCF0003.JPG"});
        QTRY_VERIFY(bench.find(u"picture"_s)->property("smoothScaling").toBool());
        QVERIFY(!bench.find(u"brokenPicture"_s));
        const auto area = WindowBench::rectOf(bench.find(u"imageArea"_s));
        const auto corner = QPointF(area.center().x(), area.top() + 60).toPoint();
        const auto before = bench.window->grabWindow().pixelColor(corner);

        bench.key(Qt::Key_Right);

        QTRY_VERIFY(bench.find(u"brokenPicture"_s));
        QVERIFY(bench.window->grabWindow().pixelColor(corner).value() < before.value() / 2);
        bench.key(Qt::Key_Right);
        QTRY_VERIFY(!bench.find(u"brokenPicture"_s));
        QTRY_COMPARE(bench.find(u"picture"_s)->property("image").value<QImage>(),
                     bench.pipeline.cachedScreenImage(bench.item(2)));
    }

    void whatIsMissingLeavesNoGapInTheBar()
    {
        WindowBench bench;
        bench.metadata->otherwise = ImageMetadata{.pixelWidth = 6240, .iso = 400};
        bench.metadata->otherwise->fuji =
            FujiSettings{.filmSimulation = u"Velvia"_s, .grain = u"Weak"_s};
        bench.cull(ScreenBench::shots(1));
        QTRY_VERIFY(bench.texts().contains(u"ISO 400"_s));

        bench.waitForFrames();
        const auto rect = [&](const QString &text) {
            return WindowBench::rectOf(bench.itemsShowing(text).value(0));
        };
        const auto bar = WindowBench::rectOf(bench.find(u"exifBar"_s));
        const QStringList row = {u"DSCF0001.JPG"_s, u"ISO 400"_s, u"Velvia"_s, u"Grain Weak"_s};
        QCOMPARE(rect(row.first()).left(), bar.left() + 16);
        for (int place = 1; place < row.size(); ++place) {
            QCOMPARE(rect(row.at(place)).left() - rect(row.at(place - 1)).right(), 14);
            QCOMPARE(rect(row.at(place)).center().y(), bar.center().y());
        }
        QCOMPARE(bar.height(), rect(row.first()).height() + 16);
    }

    void theSettingsBeforeStayUntilTheNextOnesAreRead()
    {
        WindowBench bench;
        bench.metadata->byName["DSCF0001.JPG"] = ImageMetadata{.iso = 100};
        bench.metadata->byName["DSCF0002.JPG"] = ImageMetadata{.iso = 200};
        bench.cull(ScreenBench::shots(2));
        QTRY_VERIFY(bench.texts().contains(u"ISO 100"_s));
        bench.touch("DSCF0002.JPG"); // so that it must be read again
        bench.metadata->isHeld = true;
        const auto reads = bench.metadata->reads.load();

        bench.key(Qt::Key_Right);

        QTRY_COMPARE(bench.metadata->reads.load(), reads + 1);
        QCOMPARE(bench.text(u"exifName"_s), u"DSCF0002.JPG"_s);
        QVERIFY(bench.texts().contains(u"ISO 100"_s));
        bench.letGo();
        QTRY_VERIFY(bench.texts().contains(u"ISO 200"_s));
        QVERIFY(!bench.texts().contains(u"ISO 100"_s));
    }

    void theBarReadsAgainWhenItIsSwitchedOffAndOn()
    {
        WindowBench bench;
        bench.metadata->otherwise = ImageMetadata{.iso = 100};
        bench.cull(ScreenBench::shots(1));
        QTRY_VERIFY(bench.texts().contains(u"ISO 100"_s));
        bench.key(Qt::Key_I);
        QTRY_VERIFY(!bench.find(u"exifBar"_s));
        bench.metadata->otherwise = ImageMetadata{.iso = 3200};
        bench.touch("DSCF0001.JPG");

        bench.key(Qt::Key_I);

        QTRY_VERIFY(bench.texts().contains(u"ISO 3200"_s));
    }

    void aLongFileNameLeavesHalfTheBarToTheSettings()
    {
        WindowBench bench;
        const auto name = std::string(180, 'N') + ".JPG";
        bench.metadata->otherwise = ImageMetadata{.iso = 400};
        bench.cull({name});
        QTRY_VERIFY(bench.texts().contains(u"ISO 400"_s));

        QVERIFY(bench.find(u"exifName"_s)->width() <= 500);
        const auto iso = WindowBench::rectOf(bench.itemsShowing(u"ISO 400"_s).value(0));
        QVERIFY(iso.right() < WindowBench::rectOf(bench.find(u"processNav"_s)).left());
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

    void aClipShowsItsPlayerAndIgnoresZoom()
    {
        WindowBench bench;
        bench.cull({"DSCF0001.MOV", "DSCF0002.JPG"});
        QTRY_VERIFY(bench.find(u"player"_s));
        QVERIFY(!bench.find(u"picture"_s));
        QVERIFY(!bench.find(u"spinner"_s));

        bench.key(Qt::Key_Z);
        bench.appState.setZoomed(true);

        QVERIFY(!bench.find(u"zoom"_s));
        QVERIFY(bench.find(u"player"_s));
    }

    void fromPhotoToClipAndBackNeitherPictureNorSpinnerIsInTheWay()
    {
        WindowBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0002.MOV", "DSCF0003.JPG"});
        QTRY_VERIFY(!bench.pipeline.cachedScreenImage(bench.item(2)).isNull());
        QTRY_VERIFY(!bench.find(u"spinner"_s));
        QStringList seen;
        const auto look = [&] {
            const bool isClip = bench.appState.session()->currentIndex() == 1;
            if (isClip && (bench.find(u"picture"_s) || !bench.find(u"player"_s))) {
                seen.append(u"a still picture of the clip"_s);
            }
            if (bench.find(u"spinner"_s)) {
                seen.append(u"spinner"_s);
            }
        };
        const auto watch = connect(bench.window, &QQuickWindow::beforeSynchronizing, this, look);

        for (const auto key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Left}) {
            bench.key(key);
            QTest::qWait(30);
        }

        disconnect(watch);
        QCOMPARE(seen, QStringList());
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

    void aStepOutOfTheZoomDecodesNoWholePictureOfTheNextItem()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(3));
        const auto hasBegun = [&](const std::string &picture) {
            const auto begun = bench.pictures.begun();
            return std::ranges::find(begun, picture) != begun.end();
        };
        bench.key(Qt::Key_Z);
        QTRY_VERIFY(hasBegun("DSCF0001.JPG whole"));

        bench.appState.selectItem(1);
        QTest::qWait(50);

        QVERIFY(!bench.find(u"zoom"_s));
        QVERIFY(!hasBegun("DSCF0002.JPG whole"));
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

    void theStepsSayWhereOneIs()
    {
        WindowBench bench;
        const QColor green(0x30, 0xd1, 0x58);
        const auto look = [&](const QString &step) {
            const auto *const text =
                bench.find(step)->property("contentItem").value<QQuickItem *>();
            const auto color = text->property("color").value<QColor>();
            return color == green               ? u"here"_s
                   : color == QColor(Qt::white) ? QString::number(text->opacity(), 'f', 2)
                                                : color.name();
        };
        const auto looks = [&] {
            return QStringList{look(u"cardStep"_s), look(u"cullStep"_s), look(u"reviewStep"_s)};
        };
        QCOMPARE(looks(), QStringList({u"here"_s, u"0.30"_s, u"0.30"_s}));
        bench.cull(ScreenBench::shots(2));
        QCOMPARE(looks(), QStringList({u"0.70"_s, u"here"_s, u"0.30"_s}));
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::review());
        QCOMPARE(looks(), QStringList({u"0.70"_s, u"0.70"_s, u"here"_s}));
        QCOMPARE(bench.itemsShowing(u"›"_s).size(), 2);
        for (const auto *const separator : bench.itemsShowing(u"›"_s)) {
            QCOMPARE(separator->property("color").value<QColor>().name(QColor::HexArgb),
                     u"#40ffffff"_s);
        }
    }

    void aPressBesideAStepDoesNotReachThePicture()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(2));
        bench.key(Qt::Key_Z);
        QTRY_VERIFY(bench.find(u"pixels"_s));
        const auto nav = WindowBench::rectOf(bench.find(u"processNav"_s));
        const QPoint from(qRound(nav.left()) + 3, qRound(nav.center().y()) + 2);

        QTest::mousePress(bench.window, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step) {
            QTest::mouseMove(bench.window, from + QPoint(-4, 6) * step);
        }
        QTest::mouseRelease(bench.window, Qt::LeftButton, {}, from + QPoint(-40, 60));

        QCOMPARE(bench.appState.zoomPan(), QSizeF(0, 0));
        QCOMPARE(bench.appState.phase(), Phase::culling());
    }

    void keysWorkAfterAnyClick_data()
    {
        QTest::addColumn<QString>("item");
        for (const auto *const name : {"picture", "exifBar", "badge", "position", "rejectCount",
                                       "strip", "cullStep", "processNav"}) {
            QTest::newRow(name) << QString::fromLatin1(name);
        }
    }

    void keysWorkAfterAnyClick()
    {
        QFETCH(QString, item);
        WindowBench bench;
        bench.cull(ScreenBench::shots(3));
        bench.defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        bench.key(Qt::Key_X);
        QTRY_VERIFY(bench.find(item));

        bench.click(item);

        const auto index = bench.appState.session()->currentIndex();
        bench.key(index == 2 ? Qt::Key_Left : Qt::Key_Right);
        QVERIFY(bench.appState.session()->currentIndex() != index);
        bench.key(Qt::Key_I);
        QTRY_VERIFY(!bench.find(u"exifBar"_s));
        bench.key(Qt::Key_Escape);
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(true));
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
