// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/MenuCommands.h"
#include "tests/app/Workbench.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using Seconds = VideoPlayer::Seconds;

/// The one player: who makes it, who drops it, and its keys.
class AppStateVideoTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<Workbench>();
        app().start();
        m_bench->cardRoot = m_bench->mountCard("CARD", {"A.MOV", "B.JPG", "C.MOV"});
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
    }

    void aClipPlaysAtOnceFromItsBeginning()
    {
        const QSignalSpy told(&app(), &AppState::videoPlayerChanged);

        playCurrent();

        QVERIFY(app().videoPlayer());
        QCOMPARE(log().url.filename(), std::filesystem::path("A.MOV"));
        QCOMPARE(log().rate, 1.0);
        QCOMPARE(told.count(), 1);
    }

    void aPhotoDoesNotPlay()
    {
        playCurrent();

        app().playVideo(app().session()->items().at(1));

        QVERIFY(app().videoPlayer()); // and what plays goes on
        QCOMPARE(log().made, 1);
    }

    void anotherClipTakesThePlaceOfTheFirst()
    {
        playCurrent();

        app().playVideo(app().session()->items().at(2));

        QCOMPARE(log().url.filename(), std::filesystem::path("C.MOV"));
        QCOMPARE(log().made, 2);
        QCOMPARE(log().alive, 1);
    }

    void withoutPlayersAClipDoesNotPlay()
    {
        m_bench->services.videoPlayer = {};
        m_bench->begin();

        app().playVideo({.id = u"A"_s, .kind = MediaKind::video, .videoURL = "/a.mov"});

        QVERIFY(!app().videoPlayer());
    }

    void leavingTheClipDropsThePlayer_data()
    {
        QTest::addColumn<std::function<void(AppStateVideoTest &)>>("leave");
        using Test = AppStateVideoTest &;
        const auto row = [](const char *name, const std::function<void(Test)> &leave) {
            QTest::newRow(name) << leave;
        };
        row("Right", [](Test t) { (void)t.m_bench->press(KeyPress::Right); });
        row("Left at the first", [](Test t) { (void)t.m_bench->press(KeyPress::Left); });
        row("X that advances", [](Test t) { (void)t.m_bench->press(u"x"_s); });
        row("Return", [](Test t) { (void)t.m_bench->press(KeyPress::Return); });
        row("Escape", [](Test t) { (void)t.m_bench->press(KeyPress::Escape); });
        row("a click on another", [](Test t) { t.app().selectItem(2); });
        row("a click on the same", [](Test t) { t.app().selectItem(0); });
        row("step: review", [](Test t) { t.app().goToReview(); });
        row("step: cull", [](Test t) { t.app().backToCulling(); });
        row("step: card", [](Test t) { t.app().backToCardScreen(); });
        row("menu: card",
            [](Test t) { MenuCommands(t.app(), *t.m_bench->keys).backToCardScreen(); });
        row("menu: review",
            [](Test t) { MenuCommands(t.app(), *t.m_bench->keys).finishCulling(); });
    }

    void leavingTheClipDropsThePlayer()
    {
        QFETCH(const std::function<void(AppStateVideoTest &)>, leave);
        playCurrent();

        leave(*this);

        QVERIFY(!app().videoPlayer());
        QCOMPARE(log().alive, 0);
        QCOMPARE(log().rate, 0.0); // it was stopped, not only dropped
    }

    void anUndoThatMovesDropsThePlayer()
    {
        (void)m_bench->press(u"x"_s);
        (void)m_bench->press(KeyPress::Right);
        playCurrent();

        app().undoDecision();

        QCOMPARE(app().session()->currentIndex(), 0);
        QVERIFY(!app().videoPlayer());
    }

    void anUndoThatChangesTheEnlargedRejectDropsThePlayer()
    {
        app().session()->jump(0);
        app().session()->toggle(app().session()->items().at(1).id);
        app().session()->toggle(app().session()->items().at(1).id);
        app().session()->jump(1);
        app().session()->toggle(app().session()->items().at(2).id);
        app().finishCulling(); // the clip C alone
        (void)m_bench->press(KeyPress::Space);
        app().playVideo(app().session()->items().at(2));
        app().session()->jump(2);

        app().undoDecision(); // C is no reject any more, and the current item stays

        QVERIFY(!app().videoPlayer());
        QVERIFY(!app().reviewEnlarged());
    }

    void anUndoOfAnotherRejectLeavesTheEnlargedClipPlaying()
    {
        (void)m_bench->press(u"x"_s); // the clip A
        (void)m_bench->press(u"x"_s);
        app().finishCulling();
        (void)m_bench->press(KeyPress::Space);
        app().playVideo(app().session()->items().at(0));
        app().session()->jump(0);

        app().undoDecision(); // B is no reject any more, and the current item

        QCOMPARE(app().session()->currentIndex(), 1);
        QVERIFY(app().reviewEnlarged());
        QVERIFY(app().videoPlayer());
        QCOMPARE(log().rate, 1.0);
        QVERIFY(m_bench->press(u"k"_s));
        QCOMPARE(log().rate, 0.0);
    }

    void anUndoThatStaysLeavesItPlaying()
    {
        m_bench->defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        playCurrent();
        (void)m_bench->press(u"x"_s);
        QCOMPARE(log().rate, 1.0); // a reject that stays does not stop it, either

        app().undoDecision();

        QVERIFY(app().videoPlayer());
        QCOMPARE(log().rate, 1.0);
    }

    void onAClipNothingIsZoomed()
    {
        (void)m_bench->press(u"x"_s);
        (void)m_bench->press(u"z"_s);
        app().undoDecision(); // back to the clip, and Z would not unzoom it
        QCOMPARE(app().session()->currentIndex(), 0);

        QVERIFY(!m_bench->press(KeyPress::Down));
        QVERIFY(m_bench->press(KeyPress::Right));

        QCOMPARE(app().session()->currentIndex(), 1);
        QVERIFY(!app().zoomed());
        QCOMPARE(app().zoomPan(), QSizeF(0, 0));
    }

    void spaceAndKPauseAndGoOn_data()
    {
        QTest::addColumn<QString>("chars");
        QTest::addColumn<int>("code");
        QTest::newRow("Space") << u" "_s << int(KeyPress::Space);
        QTest::newRow("K") << u"k"_s << 0;
    }

    void spaceAndKPauseAndGoOn()
    {
        QFETCH(const QString, chars);
        QFETCH(const int, code);
        playCurrent();

        QVERIFY(m_bench->keys->handleKey({.chars = chars, .keyCode = quint16(code)}));
        QCOMPARE(log().rate, 0.0);
        QVERIFY(m_bench->keys->handleKey({.chars = chars, .keyCode = quint16(code)}));
        QCOMPARE(log().rate, 1.0);
    }

    void jAndLSeekTwoSecondsWithinTheClip_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<double>("from");
        QTest::addColumn<std::optional<double>>("duration");
        QTest::addColumn<double>("to");
        using Known = std::optional<double>;
        QTest::newRow("J") << u"j"_s << 5.25 << Known(10) << 3.25;
        QTest::newRow("L") << u"l"_s << 5.25 << Known(10) << 7.25;
        QTest::newRow("J at the beginning") << u"j"_s << 1.5 << Known(10) << 0.0;
        QTest::newRow("L at the end") << u"l"_s << 9.0 << Known(10) << 10.0;
        QTest::newRow("L without a known end") << u"l"_s << 9.0 << Known() << 11.0;
        QTest::newRow("J without a known end") << u"j"_s << 1.0 << Known() << 0.0;
    }

    void jAndLSeekTwoSecondsWithinTheClip()
    {
        QFETCH(const QString, key);
        QFETCH(const double, from);
        QFETCH(const std::optional<double>, duration);
        QFETCH(const double, to);
        playCurrent();
        log().time = Seconds(from);
        if (duration) {
            log().duration = Seconds(*duration);
        }

        QVERIFY(m_bench->press(key));

        QCOMPARE(log().time.count(), to);
        QCOMPARE(log().rate, 1.0);
    }

    void withoutAPlayerItsKeysPass()
    {
        for (const auto &key : {u"j"_s, u"k"_s, u"l"_s}) {
            QVERIFY(!m_bench->press(key));
        }
        QVERIFY(!m_bench->press(KeyPress::Space));
    }

    void onAPhotoThePlayersKeysPass()
    {
        playCurrent();
        app().session()->next(); // as if the player had been left behind

        QVERIFY(!m_bench->press(u"k"_s));
        QCOMPARE(log().rate, 1.0);
    }

    void theEnlargedClipHasItsLettersButSpaceCloses()
    {
        reviewAll();
        QVERIFY(m_bench->press(KeyPress::Space));
        app().playVideo(app().session()->items().at(0));

        QVERIFY(m_bench->press(u"k"_s));
        QCOMPARE(log().rate, 0.0);
        QVERIFY(m_bench->press(u"l"_s));
        QCOMPARE(log().time.count(), 2.0);
        QVERIFY(m_bench->press(u"j"_s));
        QCOMPARE(log().time.count(), 0.0);
        QVERIFY(m_bench->press(KeyPress::Space));

        QVERIFY(!app().reviewEnlarged());
        QVERIFY(!app().videoPlayer());
    }

    void closingTheEnlargedClipDropsThePlayer_data()
    {
        QTest::addColumn<QString>("chars");
        QTest::addColumn<int>("code");
        QTest::newRow("Escape") << QString() << int(KeyPress::Escape);
        QTest::newRow("X") << u"x"_s << 0;
        QTest::newRow("U") << u"u"_s << 0;
    }

    void closingTheEnlargedClipDropsThePlayer()
    {
        QFETCH(const QString, chars);
        QFETCH(const int, code);
        reviewAll();
        (void)m_bench->press(KeyPress::Space);
        app().playVideo(app().session()->items().at(0));

        QVERIFY(m_bench->keys->handleKey({.chars = chars, .keyCode = quint16(code)}));

        QVERIFY(!app().reviewEnlarged());
        QVERIFY(!app().videoPlayer());
        QCOMPARE(app().phase(), Phase::review());
    }

    void aDeletionLetsGoOfTheClip()
    {
        reviewAll();
        (void)m_bench->press(KeyPress::Space);
        app().playVideo(app().session()->items().at(0));

        app().performDelete();

        QVERIFY(!app().videoPlayer());
        QTRY_COMPARE(app().phase(), Phase::summary(3, 0, 0));
    }

    void anotherCardDropsThePlayer()
    {
        (void)m_bench->press(KeyPress::Escape);
        m_bench->mountCard("TWO", Workbench::shots(1));
        QTRY_VERIFY(app().canSwitchCards());
        playCurrent();

        (void)m_bench->press(KeyPress::Tab);

        QTRY_COMPARE(app().cardName(), u"TWO"_s);
        QVERIFY(!app().videoPlayer());
    }

private:
    AppState &app() const { return *m_bench->appState; }

    FakePlayer::Log &log() const { return m_bench->player; }

    void playCurrent() { app().playVideo(*app().session()->currentItem()); }

    void reviewAll()
    {
        m_bench->rejectAll();
        app().finishCulling();
    }

    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(AppStateVideoTest)
#include "AppStateVideoTest.moc"
