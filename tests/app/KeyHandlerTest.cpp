// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/Workbench.h"

using namespace Qt::StringLiterals;

class KeyHandlerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<Workbench>(); }

    void commandChordsAreNeverConsumed()
    {
        m_bench->cull(2);

        for (const auto &chars : {u"x"_s, u"z"_s, u"i"_s, u"q"_s}) {
            QVERIFY(!m_bench->keys->handleKey({.chars = chars, .command = true}));
        }
        QVERIFY(!m_bench->keys->handleKey({.keyCode = KeyPress::Return, .command = true}));
        QVERIFY(!app().session()->hasRejects());
    }

    void beforeACardNoKeyIsConsumed()
    {
        for (const auto code : {KeyPress::Return, KeyPress::Tab, KeyPress::Space, KeyPress::Escape,
                                KeyPress::Left, KeyPress::Right, KeyPress::Down, KeyPress::Up}) {
            QVERIFY(!m_bench->press(code));
        }
        QVERIFY(!m_bench->press(u"x"_s));
    }

    void returnStartsCullingAndOtherKeysPass()
    {
        app().start();
        m_bench->mountCard("CARD", Workbench::shots(1));
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));

        QVERIFY(!m_bench->press(u"x"_s));
        QVERIFY(!m_bench->press(KeyPress::Space));
        QVERIFY(m_bench->press(KeyPress::Return));

        QTRY_COMPARE(app().phase(), Phase::culling());
    }

    void returnAsksForAccess()
    {
        const auto root = m_bench->makeCard("CARD", Workbench::shots(1));
        m_bench->access->closed.insert(root);
        app().start();
        m_bench->mountCard("CARD", {});
        QTRY_COMPARE(app().phase(), Phase::needsAccess());

        QVERIFY(!m_bench->press(KeyPress::Escape));
        QVERIFY(m_bench->press(KeyPress::Return));

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
    }

    void tabSwitchesCardsOnlyWithTwoAndBeforeCulling()
    {
        app().start();
        m_bench->mountCard("ONE", Workbench::shots(2));
        QTRY_COMPARE(app().cardName(), u"ONE"_s);
        QVERIFY(!m_bench->press(KeyPress::Tab));
        m_bench->mountCard("TWO", Workbench::shots(2));
        QTRY_VERIFY(app().canSwitchCards());

        QVERIFY(m_bench->press(KeyPress::Tab));
        QTRY_COMPARE(app().cardName(), u"TWO"_s);
        QVERIFY(m_bench->press(KeyPress::Return));
        QTRY_COMPARE(app().phase(), Phase::culling());
        QVERIFY(!m_bench->press(KeyPress::Tab));
    }

    void xRejectsAndAdvances()
    {
        m_bench->cull(2);

        QVERIFY(m_bench->press(u"x"_s));

        QCOMPARE(app().session()->rejectedCount(), 1);
        QCOMPARE(app().session()->currentIndex(), 1);
    }

    void xWithoutAutoAdvanceStays()
    {
        m_bench->cull(2);
        m_bench->defaults.setBoolean(u"autoAdvanceOnReject"_s, false);

        QVERIFY(m_bench->press(u"x"_s));
        QCOMPARE(app().session()->currentIndex(), 0);

        m_bench->defaults.setBoolean(u"autoAdvanceOnReject"_s, true); // takes effect at the next X
        (void)m_bench->press(u"x"_s);
        QVERIFY(!app().session()->hasRejects());
        QVERIFY(m_bench->press(u"x"_s));
        QCOMPARE(app().session()->currentIndex(), 1);
    }

    void xThatUnrejectsNeverMoves()
    {
        m_bench->cull(2);
        app().session()->toggleCurrent();

        QVERIFY(m_bench->press(u"x"_s));

        QVERIFY(!app().session()->hasRejects());
        QCOMPARE(app().session()->currentIndex(), 0);
    }

    void xOnTheLastItemEndsInTheReview()
    {
        m_bench->cull(1);

        QVERIFY(m_bench->press(u"x"_s));

        QCOMPARE(app().phase(), Phase::review());
    }

    void rightOnTheLastItemEndsInTheReview()
    {
        m_bench->cull(2);

        QVERIFY(m_bench->press(KeyPress::Right));
        QCOMPARE(app().session()->currentIndex(), 1);
        QVERIFY(m_bench->press(KeyPress::Right));

        QCOMPARE(app().phase(), Phase::review());
    }

    void leftAtTheFirstItemStillUnzoomsAndRecords()
    {
        m_bench->cull(2);
        const auto before = app().changeCount();

        QVERIFY(m_bench->press(KeyPress::Left));

        QCOMPARE(app().session()->currentIndex(), 0);
        QCOMPARE(app().changeCount(), before + 1);
    }

    void zoomedArrowsPan_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QSizeF>("pan");
        QTest::newRow("left") << int(KeyPress::Left) << QSizeF(80, 0);
        QTest::newRow("right") << int(KeyPress::Right) << QSizeF(-80, 0);
        QTest::newRow("up") << int(KeyPress::Up) << QSizeF(0, 80);
        QTest::newRow("down") << int(KeyPress::Down) << QSizeF(0, -80);
    }

    void zoomedArrowsPan()
    {
        QFETCH(const int, code);
        QFETCH(const QSizeF, pan);
        m_bench->cull(2);
        QVERIFY(m_bench->press(u"z"_s));
        QVERIFY(app().zoomed());

        QVERIFY(m_bench->press(quint16(code)));

        QCOMPARE(app().zoomPan(), pan);
        QCOMPARE(app().session()->currentIndex(), 0);
    }

    void upAndDownPassWithoutZoom()
    {
        m_bench->cull(2);

        QVERIFY(!m_bench->press(KeyPress::Up));
        QVERIFY(!m_bench->press(KeyPress::Down));
        QCOMPARE(app().zoomPan(), QSizeF(0, 0));
    }

    void zOnAClipPasses()
    {
        app().start();
        m_bench->mountCard("CARD", {"DSCF0001.MOV"});
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        (void)m_bench->press(KeyPress::Return);
        QTRY_COMPARE(app().phase(), Phase::culling());

        QVERIFY(!m_bench->press(u"z"_s));

        QVERIFY(!app().zoomed());
    }

    void iSwitchesTheInformationBar()
    {
        m_bench->cull(1);

        QVERIFY(m_bench->press(u"i"_s));
        QVERIFY(!app().showExifBar());
        QVERIFY(m_bench->press(u"i"_s));
        QVERIFY(app().showExifBar());
    }

    void escapeLeavesForTheCardScreenResumable()
    {
        m_bench->cull(2);

        QVERIFY(m_bench->press(KeyPress::Escape));

        QCOMPARE(app().phase(), Phase::cardReady(true));
    }

    void returnEndsCulling()
    {
        m_bench->cull(2);

        QVERIFY(m_bench->press(KeyPress::Return));

        QCOMPARE(app().phase(), Phase::review());
    }

    void otherKeysOfCullingPass()
    {
        m_bench->cull(2);

        for (const auto &chars : {u"u"_s, u"a"_s, u"j"_s, u"k"_s, u"l"_s, u""_s}) {
            QVERIFY(!m_bench->press(chars));
        }
        QVERIFY(!m_bench->press(KeyPress::Space));
    }

    void reviewArrowsMoveWithinTheGrid_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("to");
        QTest::newRow("left") << 3 << int(KeyPress::Left) << 2;
        QTest::newRow("left at the first") << 0 << int(KeyPress::Left) << 0;
        QTest::newRow("right") << 3 << int(KeyPress::Right) << 4;
        QTest::newRow("right at the last") << 6 << int(KeyPress::Right) << 6;
        QTest::newRow("down past the end") << 5 << int(KeyPress::Down) << 6;
        QTest::newRow("down a row") << 1 << int(KeyPress::Down) << 6;
        QTest::newRow("up a row") << 5 << int(KeyPress::Up) << 0;
        QTest::newRow("up past the start") << 3 << int(KeyPress::Up) << 0;
    }

    void reviewArrowsMoveWithinTheGrid()
    {
        QFETCH(const int, from);
        QFETCH(const int, code);
        QFETCH(const int, to);
        reviewOf(7);
        app().setReviewSelection(from);

        QVERIFY(m_bench->press(quint16(code)));

        QCOMPARE(app().reviewSelection(), to);
    }

    void inAReviewWithoutRejectsReturnAndSpacePass()
    {
        m_bench->cull(2);
        app().finishCulling();

        QVERIFY(!m_bench->press(KeyPress::Return));
        QVERIFY(!m_bench->press(KeyPress::Space));
        QVERIFY(!app().confirmingDelete());
        QVERIFY(!app().reviewEnlarged());
        QVERIFY(m_bench->press(KeyPress::Right));
        QCOMPARE(app().reviewSelection(), 0);
    }

    void xAndURescue()
    {
        reviewOf(3);

        QVERIFY(m_bench->press(u"x"_s));
        QCOMPARE(app().session()->rejectedCount(), 2);
        QVERIFY(m_bench->press(u"u"_s));
        QCOMPARE(app().session()->rejectedCount(), 1);
    }

    void spaceEnlargesAndClosesAndUnzooms()
    {
        reviewOf(2);
        app().setZoomed(true);

        QVERIFY(m_bench->press(KeyPress::Space));
        QVERIFY(app().reviewEnlarged());
        QVERIFY(!app().zoomed());
        QVERIFY(m_bench->press(u"z"_s));
        QVERIFY(app().zoomed());
        QVERIFY(!m_bench->press(KeyPress::Left));
        QVERIFY(!m_bench->press(KeyPress::Return));
        QVERIFY(m_bench->press(KeyPress::Space));
        QVERIFY(!app().reviewEnlarged());
    }

    void escapeClosesTheEnlargedRejectFirst()
    {
        reviewOf(2);
        (void)m_bench->press(KeyPress::Space);

        QVERIFY(m_bench->press(KeyPress::Escape));
        QVERIFY(!app().reviewEnlarged());
        QCOMPARE(app().phase(), Phase::review());
        QVERIFY(m_bench->press(KeyPress::Escape));
        QCOMPARE(app().phase(), Phase::culling());
    }

    void rescuingTheEnlargedRejectClosesIt()
    {
        reviewOf(2);
        (void)m_bench->press(KeyPress::Space);

        QVERIFY(m_bench->press(u"u"_s));

        QVERIFY(!app().reviewEnlarged());
        QCOMPARE(app().session()->rejectedCount(), 1);
    }

    void returnAsksAndThenTheConfirmationHasTheKeys()
    {
        reviewOf(2);

        QVERIFY(m_bench->press(KeyPress::Return));

        QVERIFY(app().confirmingDelete());
        for (const auto code : {KeyPress::Return, KeyPress::Escape, KeyPress::Left}) {
            QVERIFY(!m_bench->press(code));
        }
        QVERIFY(!m_bench->press(u"x"_s));
        QCOMPARE(app().session()->rejectedCount(), 2);
    }

    void whileDeletingAndInTheSummaryKeysPass()
    {
        reviewOf(2);
        m_bench->files->removalIsHeld = true;
        app().performDelete();
        QVERIFY(!m_bench->press(KeyPress::Escape));
        QVERIFY(!m_bench->press(u"x"_s));
        m_bench->files->removalIsHeld = false;
        QTRY_COMPARE(app().phase(), Phase::summary(2, 0, 0));

        QVERIFY(!m_bench->press(KeyPress::Return));
        QVERIFY(!m_bench->press(KeyPress::Tab));
    }

private:
    [[nodiscard]] AppState &app() const { return *m_bench->appState; }

    void reviewOf(int count) const
    {
        m_bench->cull(count);
        for (const auto &item : app().session()->items()) {
            app().session()->toggle(item.id);
        }
        app().finishCulling();
    }

    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(KeyHandlerTest)
#include "KeyHandlerTest.moc"
