// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/ui/WindowBench.h"

#include <functional>

using namespace Qt::StringLiterals;

/// A card is pulled, whatever is on screen.
class CardGoesTest : public QObject {
    Q_OBJECT

    using Road = std::function<void(WindowBench &)>;

private Q_SLOTS:
    void nothingStaysOpenAndTheNextCardStartsClean_data()
    {
        QTest::addColumn<Road>("road");
        const auto row = [](const char *name, const Road &road) { QTest::newRow(name) << road; };
        row("culling", [](WindowBench &) {});
        row("zoomed", [](WindowBench &bench) {
            bench.key(Qt::Key_Z);
            QTRY_VERIFY(bench.find(u"pixels"_s));
        });
        row("a clip", [](WindowBench &bench) {
            bench.appState.selectItem(bench.appState.session()->items().size() - 1);
            QTRY_VERIFY(bench.find(u"player"_s));
        });
        row("an open menu", [](WindowBench &bench) {
            bench.click(u"menuButton"_s);
            QTRY_VERIFY(bench.window->property("popupOpen").toBool());
        });
        row("the grid", [](WindowBench &bench) { review(bench); });
        row("an enlarged reject", [](WindowBench &bench) {
            review(bench);
            bench.key(Qt::Key_Space);
            QTRY_VERIFY(bench.find(u"enlarged"_s));
        });
        row("an enlarged reject, zoomed", [](WindowBench &bench) {
            review(bench);
            bench.key(Qt::Key_Space);
            bench.key(Qt::Key_Z);
            QTRY_VERIFY(bench.find(u"pixels"_s));
        });
        row("the question", [](WindowBench &bench) {
            review(bench);
            bench.key(Qt::Key_Return);
            QTRY_VERIFY(bench.find(u"confirmTitle"_s));
        });
        row("deleting", [](WindowBench &bench) {
            review(bench);
            bench.files->removalIsHeld = true;
            bench.appState.performDelete();
            QTRY_VERIFY(bench.find(u"progress"_s));
        });
        row("the summary", [](WindowBench &bench) {
            review(bench);
            bench.appState.performDelete();
            QTRY_VERIFY(bench.find(u"counts"_s));
        });
        row("the summary with its list", [](WindowBench &bench) {
            review(bench);
            bench.files->removalsFail = true;
            bench.appState.performDelete();
            QTRY_VERIFY(bench.find(u"failuresButton"_s));
            bench.click(u"failuresButton"_s);
            QTRY_VERIFY(bench.find(u"failureList"_s));
        });
    }

    void nothingStaysOpenAndTheNextCardStartsClean()
    {
        QFETCH(Road, road);
        WindowBench bench;
        auto shots = ScreenBench::shots(40);
        shots.back() = "DSCF0040.MOV";
        bench.cull(shots);
        road(bench);
        if (QTest::currentTestFailed()) {
            return;
        }

        bench.volumes.unmount(bench.cardRoot);

        QTRY_COMPARE(bench.appState.phase(), Phase::waitingForCard());
        QTRY_COMPARE(bench.text(u"title"_s), u"Insert an SD card"_s);
        for (const auto &gone : {u"confirmTitle"_s, u"enlarged"_s, u"zoom"_s, u"grid"_s,
                                 u"progress"_s, u"counts"_s, u"filmstrip"_s, u"exifBar"_s}) {
            QVERIFY2(!bench.find(gone), qPrintable(gone));
        }
        bench.letGo();
        bench.files->removalsFail = false;
        bench.key(Qt::Key_Escape); // a menu may be open, for it belongs to no card
        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());
        startOnTheNextCard(bench);
    }

    void anOpenPickerGoesWithTheOtherCard()
    {
        WindowBench bench;
        bench.appState.start();
        const auto one = bench.mountCard("ONE", ScreenBench::shots(2));
        bench.mountCard("TWO", ScreenBench::shots(2));
        QTRY_COMPARE(bench.text(u"title"_s), u"ONE"_s);
        QTRY_VERIFY(bench.find(u"cardPicker"_s));
        bench.click(u"cardPicker"_s);
        QTRY_VERIFY(bench.window->property("popupOpen").toBool());

        bench.volumes.unmount(one);

        QTRY_COMPARE(bench.text(u"title"_s), u"TWO"_s);
        QTRY_VERIFY(!bench.window->property("popupOpen").toBool());
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
    }

private:
    static void review(WindowBench &bench)
    {
        for (int reject = 0; reject < 30; ++reject) {
            bench.key(Qt::Key_X);
        }
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::review());
        for (int row = 0; row < 4; ++row) {
            bench.key(Qt::Key_Down);
        }
        QTRY_VERIFY(bench.find(u"grid"_s));
    }

    static void startOnTheNextCard(WindowBench &bench)
    {
        bench.mountCard("NEXT", {"DSCF0101.JPG", "DSCF0102.JPG", "DSCF0103.JPG"});
        QTRY_COMPARE(bench.appState.phase(), Phase::cardReady(false));
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::culling());
        QCOMPARE(bench.text(u"exifName"_s), u"DSCF0101.JPG"_s);
        QCOMPARE(bench.text(u"position"_s), u"1 / 3"_s);
        QCOMPARE(bench.text(u"rejectCount"_s), u"0 rejected"_s);
        QVERIFY(!bench.find(u"badge"_s));
        QVERIFY(!bench.find(u"zoom"_s));
        const auto *const picture = bench.find(u"picture"_s);
        QTRY_VERIFY(picture->property("smoothScaling").toBool());
        QTRY_COMPARE(picture->property("image").value<QImage>(),
                     bench.pipeline.cachedScreenImage(bench.item(0)));
        bench.key(Qt::Key_X);
        bench.key(Qt::Key_Return);
        QTRY_COMPARE(bench.appState.phase(), Phase::review());
        QCOMPARE(bench.appState.reviewSelection(), 0);
        QVERIFY(!bench.find(u"enlarged"_s));
        QTRY_COMPARE(bench.find(u"grid"_s)->property("count").toInt(), 1);
        QCOMPARE(bench.find(u"grid"_s)->property("contentY").toReal(), 0);
    }
};

Q_DECLARE_METATYPE(std::function<void(WindowBench &)>)

QTEST_MAIN(CardGoesTest)
#include "CardGoesTest.moc"
