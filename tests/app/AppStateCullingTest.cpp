// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/Workbench.h"

using namespace Qt::StringLiterals;

/// From the scan to the review, and what becomes of the decisions.
class AppStateCullingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<Workbench>(); }

    void cullingBeginsAfterTheScanAtTheFirstItem()
    {
        m_bench->cull(3);

        QCOMPARE(app().session()->items().size(), 3);
        QCOMPARE(app().session()->currentIndex(), 0);
    }

    void aCardWithoutPicturesHoldsNothing()
    {
        app().start();
        m_bench->mountCard("CARD", {"README.TXT"});
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));

        app().startCulling();

        QCOMPARE(app().phase(), Phase::scanning());
        QTRY_COMPARE(app().phase(), Phase::noMedia());
        QVERIFY(!app().hasSession());
    }

    void startCullingOutsideCardReadyDoesNothing()
    {
        app().startCulling();
        QCOMPARE(app().phase(), Phase::waitingForCard());

        m_bench->cull(2);
        app().startCulling();
        QCOMPARE(app().phase(), Phase::culling());
    }

    void aScanOfACardThatWasPulledIsIgnored()
    {
        app().start();
        const auto root = m_bench->mountCard("CARD", Workbench::shots(2));
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        m_bench->files->scanIsHeld = true;
        app().startCulling();
        m_bench->volumes.unmount(root);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        m_bench->mountCard("CARD", {}); // back at the same path before the scan is through
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));

        m_bench->files->scanIsHeld = false;

        QTest::qWait(100);
        QCOMPARE(app().phase(), Phase::cardReady(false));
        QVERIFY(!app().hasSession());
    }

    void scansThatHangHoldUpNoOther()
    {
        app().start();
        for (int number = 0; number < 12; ++number) { // more than any pool's usual threads
            const auto root = m_bench->mountCard("HANGS", Workbench::shots(1));
            QTRY_COMPARE(app().phase(), Phase::cardReady(false));
            m_bench->files->holdScanOf(root);
            app().startCulling();
            m_bench->volumes.unmount(root);
            QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        }

        m_bench->cullCard(2);

        QCOMPARE(app().phase(), Phase::culling());
    }

    void theScanOfACardThatWasSwitchedFromIsIgnored()
    {
        app().start();
        const auto one = m_bench->mountCard("ONE", Workbench::shots(2));
        QTRY_COMPARE(app().cardName(), u"ONE"_s);
        const auto two = m_bench->mountCard("TWO", Workbench::shots(3));
        QTRY_VERIFY(app().canSwitchCards());
        m_bench->files->holdScanOf(one);
        m_bench->files->holdScanOf(two);
        app().startCulling();
        app().backToCardScreen();
        app().cycleCard();
        QTRY_COMPARE(app().cardName(), u"TWO"_s);
        app().startCulling();

        m_bench->files->letScanGo(one);

        QTest::qWait(50);
        QCOMPARE(app().phase(), Phase::scanning());
        m_bench->files->letScanGo(two);
        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->items().size(), 3);
    }

    void anOlderScanOfTheSameCardIsIgnored()
    {
        app().start();
        const auto root = m_bench->mountCard("ONE", Workbench::shots(2));
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        m_bench->files->holdScanOf(root);
        app().startCulling();
        QTRY_COMPARE(m_bench->files->heldScans.load(), 1);
        app().backToCardScreen();
        app().startCulling();
        QTRY_COMPARE(m_bench->files->heldScans.load(), 2);
        m_bench->makeCard("ONE", {"DSCF0009.JPG"});

        m_bench->files->letScansGo();

        QTRY_COMPARE(app().phase(), Phase::culling());
        QTest::qWait(50);
        QCOMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->items().size(), 3);
    }

    void leavingTheScanIgnoresItsResult()
    {
        app().start();
        m_bench->mountCard("CARD", Workbench::shots(2));
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        m_bench->files->scanIsHeld = true;
        app().startCulling();
        app().backToCardScreen();
        QCOMPARE(app().phase(), Phase::cardReady(false));

        m_bench->files->scanIsHeld = false;

        QTest::qWait(100);
        QCOMPARE(app().phase(), Phase::cardReady(false));
    }

    void decisionsOutliveLeavingAndStartingAgain()
    {
        m_bench->cull(3);
        app().session()->toggleCurrent();
        app().session()->next();
        app().afterMove();

        app().leaveCulling();
        QCOMPARE(app().phase(), Phase::cardReady(true));
        QVERIFY(app().hasSession());
        app().startCulling();

        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->currentIndex(), 1);
        QCOMPARE(app().session()->rejectedCount(), 1);
    }

    void decisionsOfOneCardNeverReachAnother()
    {
        m_bench->cull(2);
        app().session()->toggleCurrent();
        app().recordChange();
        app().leaveCulling();
        m_bench->mountCard("OTHER", Workbench::shots(2)); // the same names on it
        QTRY_VERIFY(app().canSwitchCards());
        app().cycleCard();
        QTRY_COMPARE(app().cardName(), u"OTHER"_s);

        app().startCulling();

        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->rejectedCount(), 0);
    }

    void aMoveUnzoomsAndCountsAsAChange()
    {
        m_bench->cull(2);
        app().setZoomed(true);
        const auto before = app().changeCount();

        app().selectItem(1);

        QCOMPARE(app().session()->currentIndex(), 1);
        QVERIFY(!app().zoomed());
        QCOMPARE(app().changeCount(), before + 1);
    }

    void selectingTheCurrentItemStillUnzooms()
    {
        m_bench->cull(2);
        app().setZoomed(true);

        app().selectItem(0);

        QVERIFY(!app().zoomed());
    }

    void finishingShowsTheReviewFromItsFirstReject()
    {
        m_bench->cull(2);
        app().setReviewSelection(3);
        app().setZoomed(true);

        app().finishCulling();

        QCOMPARE(app().phase(), Phase::review());
        QCOMPARE(app().reviewSelection(), 0);
        QVERIFY(!app().zoomed());
        app().backToCulling();
        QCOMPARE(app().phase(), Phase::culling());
        app().goToReview();
        QCOMPARE(app().phase(), Phase::review());
    }

    void theReviewNeedsASession()
    {
        app().goToReview();
        app().backToCulling();

        QCOMPARE(app().phase(), Phase::waitingForCard());
    }

    void rescuingTheLastOfTheListMovesTheSelectionBack()
    {
        m_bench->cull(3);
        m_bench->rejectAll();
        app().finishCulling();
        app().setReviewSelection(2);

        app().rescueSelected();
        QCOMPARE(app().reviewSelection(), 1);
        app().setReviewSelection(0);
        app().rescueSelected();
        QCOMPARE(app().reviewSelection(), 0);
        app().rescueSelected();
        QCOMPARE(app().reviewSelection(), 0);
        QVERIFY(!app().session()->hasRejects());
        app().rescueSelected(); // nothing left
        QVERIFY(!app().session()->hasRejects());
    }

    void anUndoThatTakesTheLastRejectAwayClosesTheEnlargedOne()
    {
        m_bench->cull(1);
        (void)m_bench->press(u"x"_s);
        QCOMPARE(app().phase(), Phase::review());
        (void)m_bench->press(KeyPress::Space);
        QVERIFY(app().reviewEnlarged());

        app().undoDecision();

        QVERIFY(!app().reviewEnlarged());
        QVERIFY(m_bench->press(KeyPress::Escape));
        QCOMPARE(app().phase(), Phase::culling());
    }

    void anUndoWithoutHistoryRecordsNothing()
    {
        m_bench->cull(1);
        const auto changes = app().changeCount();

        app().undoDecision();

        QCOMPARE(app().changeCount(), changes);
    }

    void undoBringsTheLastDecisionBackAndClampsTheSelection()
    {
        m_bench->cull(2);
        m_bench->rejectAll();
        app().finishCulling();
        app().setReviewSelection(1);

        app().undoDecision();

        QCOMPARE(app().session()->rejectedCount(), 1);
        QCOMPARE(app().reviewSelection(), 0);
    }

    void undoWhileCullingLeavesTheSelectionOfTheReviewAlone()
    {
        m_bench->cull(2);
        m_bench->rejectAll();
        app().setReviewSelection(1);

        app().undoDecision();

        QCOMPARE(app().session()->rejectedCount(), 1);
        QCOMPARE(app().reviewSelection(), 1);
    }

    void startingAgainOnTheSameCardKeepsThePictures()
    {
        m_bench->cull(2);
        const auto item = *app().session()->currentItem();
        QTRY_VERIFY(!m_bench->pipeline.cachedScreenImage(item).isNull());
        app().leaveCulling();

        app().startCulling();

        QTRY_COMPARE(app().phase(), Phase::culling());
        QVERIFY(!m_bench->pipeline.cachedScreenImage(item).isNull());
    }

private:
    [[nodiscard]] AppState &app() const { return *m_bench->appState; }

    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(AppStateCullingTest)
#include "AppStateCullingTest.moc"
