// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

#include <QAccessible>
#include <QEasingCurve>
#include <QElapsedTimer>
#include <QStyleHints>

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class FilmstripTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QAccessible::setActive(true); }

    void ofManyItemsOnlyThoseNearTheMiddleAreMadeAndAskedFor()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(20000));
        QTRY_VERIFY(bench.find(u"border"_s));
        QCOMPARE_LE(thumbs(bench).size(), most);
        QCOMPARE_LE(asked(bench), most);

        // A long way: what lies between is passed over.
        qsizetype made = 0;
        QObject::connect(bench.window, &QQuickWindow::frameSwapped, this,
                         [&] { made = std::max(made, thumbs(bench).size()); });
        bench.appState.selectItem(15000);
        QCOMPARE_LE(std::abs(stripX(bench) - centred(15000)), 1000.0);
        QTRY_COMPARE(stripX(bench), centred(15000));
        QCOMPARE_LE(made, most);
        QCOMPARE_LE(asked(bench), 3 * most);

        // A short one: each step asks for one more.
        for (int step = 0; step < 40; ++step) {
            bench.key(Qt::Key_Right);
            QTest::qWait(5);
        }
        QTRY_COMPARE(stripX(bench), centred(15040));
        QCOMPARE_LE(made, most);
        QCOMPARE_LE(asked(bench), 3 * most + 80);

        // The strip that is built anew stands there at once.
        for (const qint64 index : {qint64(15000), qint64(19999), qint64(0)}) {
            bench.appState.selectItem(index);
            bench.appState.goToReview();
            QTRY_VERIFY(!bench.find(u"strip"_s));
            bench.appState.backToCulling();
            QTRY_VERIFY(bench.find(u"strip"_s));
            QCOMPARE(stripX(bench), within(centred(index), 20000));
            QVERIFY(!glide(bench)->property("running").toBool());
            QTRY_VERIFY(bench.find(u"border"_s));
            QCOMPARE_LE(thumbs(bench).size(), most);
            QCOMPARE(bench.text(u"position"_s), u"%1 / 20000"_s.arg(index + 1));
        }
    }

    void aStepEasesIntoThePlaceWithinATenthOfASecond()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(60));
        bench.appState.selectItem(30);
        QTRY_COMPARE(stripX(bench), centred(30));
        QTest::qWait(200);

        QElapsedTimer time;
        QList<std::pair<qint64, qreal>> places;
        const auto watch = QObject::connect(bench.window, &QQuickWindow::afterAnimating, this, [&] {
            if (places.isEmpty() || places.last().second != stripX(bench)) {
                places.append({time.elapsed(), stripX(bench)});
            }
        });
        time.start();
        bench.key(Qt::Key_Right);
        QTRY_COMPARE(stripX(bench), centred(31));
        QObject::disconnect(watch);

        QCOMPARE(glide(bench)->property("duration").toInt(), 120);
        QCOMPARE(glide(bench)->property("easing").value<QEasingCurve>().type(),
                 QEasingCurve::OutQuad);
        QVERIFY(places.size() > 2); // not in one leap
        QVERIFY(places.last().first >= 100);
        for (qsizetype number = 1; number < places.size(); ++number) {
            QVERIFY(places[number].second > places[number - 1].second);
        }
    }

    void aHeldKeyIsFollowedWithoutLagging()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(100));
        bench.appState.selectItem(30);
        QTRY_COMPARE(stripX(bench), centred(30));

        std::vector<qreal> lags;
        for (int step = 1; step <= 40; ++step) {
            bench.key(Qt::Key_Right);
            QTest::qWait(33);
            lags.push_back(centred(30 + step) - stripX(bench));
        }

        std::ranges::sort(lags);
        QVERIFY2(lags[lags.size() / 2] <= 30, qPrintable(QString::number(lags[lags.size() / 2])));
        QTRY_COMPARE(stripX(bench), centred(70));
    }

    void theSecondClickOfADoubleClickSelectsNothing()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(60));
        bench.appState.selectItem(30);
        QTRY_COMPARE(stripX(bench), centred(30));
        const auto place = placeOf(bench, 33);

        QTest::mouseClick(bench.window, Qt::LeftButton, {}, place);
        QCOMPARE(bench.appState.session()->currentIndex(), 33);
        QTRY_COMPARE(stripX(bench), centred(33));
        QTest::mouseDClick(bench.window, Qt::LeftButton, {}, place);
        QCOMPARE(bench.appState.session()->currentIndex(), 33);

        QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval() + 50);
        QTest::mouseClick(bench.window, Qt::LeftButton, {}, place);
        QCOMPARE(bench.appState.session()->currentIndex(), 36);
        QTest::mouseClick(bench.window, Qt::LeftButton, {}, place - QPoint(120, 0));
        QVERIFY(bench.appState.session()->currentIndex() < 36);
    }

    void everyWheelAndSwipeMovesTheStripAndNothingElse_data()
    {
        QTest::addColumn<QPoint>("pixels");
        QTest::addColumn<QPoint>("angle");
        QTest::addColumn<qreal>("way");
        QTest::newRow("wheel down") << QPoint() << QPoint(0, -120) << 120.0;
        QTest::newRow("wheel up") << QPoint() << QPoint(0, 120) << -120.0;
        QTest::newRow("sideways wheel") << QPoint() << QPoint(-120, 0) << 120.0;
        QTest::newRow("swipe to the left") << QPoint(-40, 1) << QPoint(-80, 2) << 40.0;
        QTest::newRow("level swipe") << QPoint(-40, 0) << QPoint(-80, 0) << 40.0;
        QTest::newRow("swipe to the right") << QPoint(40, -3) << QPoint(80, -6) << -40.0;
        QTest::newRow("swipe up") << QPoint(2, -50) << QPoint(4, -100) << 50.0;
        QTest::newRow("far beyond the end") << QPoint() << QPoint(0, -120000) << 1320.0 - 20;
    }

    void everyWheelAndSwipeMovesTheStripAndNothingElse()
    {
        QFETCH(QPoint, pixels);
        QFETCH(QPoint, angle);
        QFETCH(qreal, way);
        WindowBench bench;
        bench.cull(ScreenBench::shots(60));
        bench.appState.selectItem(30);
        QTRY_COMPARE(stripX(bench), centred(30));
        const QSignalSpy changes(&bench.appState, &AppState::changeCountChanged);

        wheel(bench, pixels, angle);

        QCOMPARE(stripX(bench), within(centred(30) + way, 60));
        QTest::qWait(150);
        QCOMPARE(stripX(bench), within(centred(30) + way, 60));
        QCOMPARE(bench.appState.session()->currentIndex(), 30);
        QVERIFY(changes.isEmpty());

        bench.key(Qt::Key_Right);
        QTRY_COMPARE(stripX(bench), centred(31));
    }

    void everyPartOfASwipeCounts()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(60));
        bench.appState.selectItem(20);
        QTRY_COMPARE(stripX(bench), centred(20));

        for (const int rise : {0, 1, 0, 0, -1, 0}) {
            wheel(bench, {-30, rise}, {-60, 2 * rise});
            QTest::qWait(10);
        }
        QTest::qWait(200);
        wheel(bench, {-30, 0}, {-60, 0});

        QCOMPARE(stripX(bench), centred(20) + 7 * 30);
    }

    void aKeyDuringAFlickCentres()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(300));
        bench.appState.selectItem(150);
        QTRY_COMPARE(stripX(bench), centred(150));

        flick(bench);
        QTRY_VERIFY(std::abs(stripX(bench) - centred(150)) > 100);
        QVERIFY(bench.find(u"strip"_s)->property("flicking").toBool());
        QCOMPARE(bench.appState.session()->currentIndex(), 150);
        bench.key(Qt::Key_Right);

        QTRY_COMPARE(stripX(bench), centred(151));
        QTest::qWait(300);
        QCOMPARE(stripX(bench), centred(151));
    }

    void aKeyDuringADragCentres()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(300));
        bench.appState.selectItem(150);
        QTRY_COMPARE(stripX(bench), centred(150));

        const auto from = placeOf(bench, 150);
        drag(bench, from);
        QVERIFY(std::abs(stripX(bench) - centred(150)) > 50);
        bench.key(Qt::Key_Right);
        QTRY_COMPARE(stripX(bench), centred(151));
        QTest::mouseMove(bench.window, from - QPoint(200, 0));
        QTest::mouseRelease(bench.window, Qt::LeftButton, {}, from - QPoint(200, 0));

        QTest::qWait(200);
        QCOMPARE(stripX(bench), centred(151));
        QCOMPARE(bench.appState.session()->currentIndex(), 151);
        drag(bench, from);
        QVERIFY(std::abs(stripX(bench) - centred(151)) > 50); // it can be dragged again
        QTest::mouseRelease(bench.window, Qt::LeftButton, {}, from - QPoint(100, 0));
    }

    void aFlickLeavesTheStripWhereItEndsOnWholePixels()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(300));
        bench.appState.selectItem(150);
        QTRY_COMPARE(stripX(bench), centred(150));

        flick(bench);

        QTRY_VERIFY(!bench.find(u"strip"_s)->property("moving").toBool());
        QVERIFY(std::abs(stripX(bench) - centred(150)) > 100);
        QCOMPARE(stripX(bench), std::round(stripX(bench)));
        QCOMPARE(bench.appState.session()->currentIndex(), 150);
    }

    void whatMovesNothingCentresToo_data()
    {
        QTest::addColumn<QString>("what");
        QTest::newRow("Left at the first item") << u"left"_s;
        QTest::newRow("a decision that stays") << u"reject"_s;
        QTest::newRow("a click on its own thumbnail") << u"click"_s;
    }

    void whatMovesNothingCentresToo()
    {
        QFETCH(QString, what);
        WindowBench bench;
        bench.defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        bench.cull(ScreenBench::shots(60));
        bench.defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        QTRY_VERIFY(bench.find(u"border"_s));
        wheel(bench, {}, {0, -240});
        QCOMPARE(stripX(bench), 232);

        if (what == u"left") {
            bench.key(Qt::Key_Left);
        } else if (what == u"reject") {
            bench.key(Qt::Key_X);
        } else {
            bench.appState.selectItem(7);
            QTRY_COMPARE(stripX(bench), within(centred(7), 60));
            wheel(bench, {}, {0, -240});
            QTest::mouseClick(bench.window, Qt::LeftButton, {}, placeOf(bench, 7));
        }

        QTRY_COMPARE(stripX(bench), within(centred(what == u"click" ? 7 : 0), 60));
    }

    void theStripRestsOnWholePixelsAtEveryWidth()
    {
        WindowBench bench({1001, 700});
        bench.cull(ScreenBench::shots(60));
        bench.appState.selectItem(30);

        QTRY_COMPARE(stripX(bench), std::round(30 * 60 + 28 - 500.5));
    }

    void aResizeKeepsWhatIsInTheMiddle()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(60));
        bench.appState.selectItem(30);
        QTRY_COMPARE(stripX(bench), centred(30));

        bench.window->resize(1200, 700);
        QTRY_COMPARE(stripX(bench), centred(30) - 100);

        wheel(bench, {}, {0, -300});
        bench.window->resize(1000, 700);
        QTRY_COMPARE(stripX(bench), centred(30) + 300);
    }

    void theCountOfRejectsIsDimmedAtNoneAndRedElse()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(3));
        const auto color = [&] {
            return bench.find(u"rejectCount"_s)->property("color").value<QColor>();
        };
        QCOMPARE(bench.text(u"rejectCount"_s), u"0 rejected"_s);
        QCOMPARE(color(), QColor::fromRgbF(1, 1, 1, 0.6F));

        bench.key(Qt::Key_X);
        QCOMPARE(bench.text(u"rejectCount"_s), u"1 rejected"_s);
        QCOMPARE(color(), QColor(0xff, 0x45, 0x3a));

        bench.appState.goToReview();
        bench.key(Qt::Key_X);
        bench.appState.backToCulling();
        QTRY_VERIFY(bench.find(u"rejectCount"_s));
        QCOMPARE(bench.text(u"rejectCount"_s), u"0 rejected"_s);
        QCOMPARE(color(), QColor::fromRgbF(1, 1, 1, 0.6F));
    }

    void aRejectedClipShowsLayerCrossAndPlay()
    {
        WindowBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0002.MOV"});
        bench.appState.selectItem(1);
        bench.key(Qt::Key_X); // the last one: on to the review
        bench.appState.backToCulling();
        QTRY_VERIFY(thumb(bench, 1));

        const auto *clip = thumb(bench, 1);
        QVERIFY(part(clip, u"layer"_s));
        QVERIFY(part(clip, u"cross"_s));
        QVERIFY(part(clip, u"play"_s));
        QVERIFY(part(clip, u"border"_s));
        QCOMPARE(part(clip, u"layer"_s)->property("color").value<QColor>(),
                 QColor::fromRgbF(0, 0, 0, 0.55F));
        QCOMPARE(WindowBench::rectOf(part(clip, u"cross"_s)).center(),
                 WindowBench::rectOf(clip).center());
        QCOMPARE(WindowBench::rectOf(part(clip, u"play"_s)).bottomRight(),
                 WindowBench::rectOf(clip).bottomRight() - QPointF(4, 4));
        const auto *photo = thumb(bench, 0);
        for (const auto &name : {u"layer"_s, u"cross"_s, u"play"_s, u"border"_s}) {
            QVERIFY2(!part(photo, name), qPrintable(name));
        }
    }

    void aThumbnailThatCannotBeMadeIsMarked()
    {
        WindowBench bench;
        bench.cull({"BROKEN1.JPG", "DSCF0002.JPG"});
        QTRY_VERIFY(thumb(bench, 1) && !pictureOf(thumb(bench, 1)).isNull());

        QTRY_VERIFY(part(thumb(bench, 0), u"broken"_s));
        QVERIFY(!part(thumb(bench, 1), u"broken"_s));
    }

    void aThumbnailNeverShowsThePictureOfAnother()
    {
        WindowBench bench;
        bench.cull(ScreenBench::shots(300));
        QTRY_VERIFY(thumb(bench, 3) && !pictureOf(thumb(bench, 3)).isNull());
        int pictures = 0;
        QStringList wrong;
        QObject::connect(bench.window, &QQuickWindow::afterSynchronizing, this, [&] {
            for (auto *shown : thumbs(bench)) {
                const QImage image = pictureOf(shown);
                if (!shown->isVisible() || image.isNull()) {
                    continue;
                }
                ++pictures;
                const auto name = shown->property("displayName").toString();
                const int hue = image.pixelColor(image.width() / 2, 0).hue();
                if (std::abs(hue - MadeUpPictures::hueOf(name.toStdString())) > 5) {
                    wrong.append(name);
                }
            }
        });

        for (int step = 0; step < 60; ++step) {
            bench.pictures.thumbnailsAreHeld = step % 20 > 10;
            bench.key(step % 3 == 2 ? Qt::Key_Left : Qt::Key_Right);
            QTest::qWait(10);
        }
        bench.appState.selectItem(200);
        QTest::qWait(50);
        bench.pictures.thumbnailsAreHeld = false;
        QTRY_VERIFY(thumb(bench, 200) && !pictureOf(thumb(bench, 200)).isNull());

        QVERIFY(pictures > 100);
        QCOMPARE(wrong, QStringList());
    }

    void thumbnailsTellWhatTheyAre()
    {
        WindowBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0002.MOV"});
        bench.key(Qt::Key_X);
        QTRY_VERIFY(thumb(bench, 1));

        const auto *strip = accessible(bench.find(u"strip"_s));
        QCOMPARE(strip->role(), QAccessible::List);
        QCOMPARE(strip->text(QAccessible::Name), u"Filmstrip"_s);
        const auto *photo = accessible(thumb(bench, 0));
        QCOMPARE(photo->role(), QAccessible::ListItem);
        QCOMPARE(photo->text(QAccessible::Name), u"DSCF0001.JPG, rejected"_s);
        QVERIFY(photo->state().selectable && !photo->state().selected);
        auto *clip = accessible(thumb(bench, 1));
        QCOMPARE(clip->text(QAccessible::Name), u"DSCF0002.MOV, clip, current"_s);
        QVERIFY(clip->state().selected);

        auto *actions = accessible(thumb(bench, 0))->actionInterface();
        QVERIFY(actions);
        actions->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(bench.appState.session()->currentIndex(), 0);
        QCOMPARE(clip->text(QAccessible::Name), u"DSCF0002.MOV, clip"_s);
    }

private:
    /// Thumbnails for a window of 1000 points, with those beside it.
    static constexpr qsizetype most = 45;

    static qreal stripX(const WindowBench &bench)
    {
        return bench.find(u"strip"_s)->property("contentX").toReal();
    }

    /// Where a strip 1000 points wide stands.
    static qreal centred(qint64 index) { return qreal(index) * 60 + 28 - 500; }

    static qreal within(qreal x, qint64 count)
    {
        return std::clamp<qreal>(x, -8, qreal(count) * 60 - 4 + 8 - 1000);
    }

    static QObject *glide(const WindowBench &bench)
    {
        return bench.find(u"strip"_s)->findChild<QObject *>(u"glide"_s);
    }

    static qsizetype asked(const WindowBench &bench)
    {
        std::set<std::string> names;
        for (const auto &name : bench.pictures.begun()) {
            if (name.ends_with(" small")) {
                names.insert(name);
            }
        }
        return qsizetype(names.size());
    }

    static QList<QQuickItem *> thumbs(const WindowBench &bench)
    {
        QList<QQuickItem *> found;
        if (const auto *strip = bench.find(u"strip"_s)) {
            const auto *content = strip->property("contentItem").value<QQuickItem *>();
            for (auto *child : content->childItems()) {
                if (child->property("displayName").isValid()) {
                    found.append(child);
                }
            }
        }
        return found;
    }

    static QQuickItem *thumb(const WindowBench &bench, int index)
    {
        for (auto *item : thumbs(bench)) {
            if (item->isVisible() && item->property("index").toInt() == index) {
                return item;
            }
        }
        return nullptr;
    }

    /// If it is visible.
    static QQuickItem *part(const QQuickItem *thumb, const QString &name)
    {
        for (auto *child : thumb->childItems()) {
            if (!child->isVisible()) {
                continue;
            }
            if (child->objectName() == name) {
                return child;
            }
            if (auto *found = part(child, name)) {
                return found;
            }
        }
        return nullptr;
    }

    static QImage pictureOf(const QQuickItem *thumb)
    {
        const auto *picture = part(thumb, u"thumbnail"_s);
        return picture ? picture->property("image").value<QImage>() : QImage();
    }

    static QAccessibleInterface *accessible(QQuickItem *item)
    {
        return QAccessible::queryAccessibleInterface(item);
    }

    static QPoint placeOf(const WindowBench &bench, int index)
    {
        return WindowBench::rectOf(thumb(bench, index)).center().toPoint();
    }

    static void wheel(const WindowBench &bench, QPoint pixels, QPoint angle)
    {
        const auto place = WindowBench::rectOf(bench.find(u"strip"_s)).center();
        QWheelEvent event(place, bench.window->mapToGlobal(place), pixels, angle, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(bench.window, &event);
    }

    /// Presses and moves 100 points to the left.
    static void drag(const WindowBench &bench, QPoint from)
    {
        QTest::mousePress(bench.window, Qt::LeftButton, {}, from);
        for (int moved = 5; moved <= 100; moved += 5) {
            QTest::mouseMove(bench.window, from - QPoint(moved, 0), 2);
        }
    }

    static void flick(const WindowBench &bench)
    {
        const auto from = placeOf(bench, 150);
        drag(bench, from);
        QTest::mouseRelease(bench.window, Qt::LeftButton, {}, from - QPoint(105, 0), 2);
    }
};

QTEST_MAIN(FilmstripTest)
#include "FilmstripTest.moc"
