// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/Workbench.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

class AppStateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<Workbench>(); }

    void itBeginsWithoutACard()
    {
        QCOMPARE(app().phase(), Phase::waitingForCard());
        QVERIFY(!app().card());
        QVERIFY(!app().session());
        QVERIFY(app().showExifBar());
        QVERIFY(!app().zoomed());
        QCOMPARE(app().zoomPan(), QSizeF(0, 0));
        QCOMPARE(app().changeCount(), 0);
    }

    void startRegistersAutoAdvance()
    {
        app().start();

        QVERIFY(m_bench->defaults.boolean(u"autoAdvanceOnReject"_s));
    }

    void aCardThatIsThereAlreadyIsOpened()
    {
        m_bench->mountCard("CARD", Workbench::shots(1));

        app().start();

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QCOMPARE(app().cardName(), u"CARD"_s);
        QCOMPARE(app().currentCardIndex(), 0);
    }

    void aCardThatComesLaterIsOpened()
    {
        app().start();
        QCOMPARE(app().phase(), Phase::waitingForCard());

        m_bench->mountCard("CARD", Workbench::shots(1));

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
    }

    void theFirstVolumeWithDcimIsOpened()
    {
        app().start();
        m_bench->mountCard("EMPTY", {});
        m_bench->mountCard("CARD", Workbench::shots(1));

        QTRY_COMPARE(app().cardName(), u"CARD"_s);
        QCOMPARE(app().availableCardNames(), (QStringList{u"EMPTY"_s, u"CARD"_s}));
    }

    void aVolumeWithoutDcimAloneChangesNothing()
    {
        app().start();
        m_bench->mountCard("EMPTY", {});

        QTRY_COMPARE(app().availableCards().size(), 1);
        QTest::qWait(50);
        QCOMPARE(app().phase(), Phase::waitingForCard());
        QVERIFY(!app().card());
    }

    void aClosedCardAsksForAccess()
    {
        m_bench->access->closed.insert(m_bench->makeCard("CARD", Workbench::shots(1)));
        app().start();
        m_bench->mountCard("CARD", {});

        QTRY_COMPARE(app().phase(), Phase::needsAccess());
        QCOMPARE(app().cardName(), u"CARD"_s);
    }

    void aStoredGrantOpensAClosedCardSilently()
    {
        const auto root = m_bench->makeCard("CARD", Workbench::shots(1));
        m_bench->access->closed.insert(root);
        m_bench->access->bookmarks[u"UUID-CARD"_s] = root;
        app().start();
        m_bench->mountCard("CARD", {});

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QVERIFY(m_bench->access->stopped.empty());
        m_bench->volumes.unmount(root);
        QTRY_COMPARE(m_bench->access->stopped.size(), size_t(1));
    }

    void aGrantStoresABookmarkAndOpensTheCard()
    {
        const auto root = m_bench->makeCard("CARD", Workbench::shots(1));
        m_bench->access->closed.insert(root);
        app().start();
        m_bench->mountCard("CARD", {});
        QTRY_COMPARE(app().phase(), Phase::needsAccess());

        app().grantAccess();

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QCOMPARE(m_bench->access->bookmarks.at(u"UUID-CARD"_s), root);
    }

    void aGrantForACardWithoutDcimShowsThatItHoldsNothing()
    {
        m_bench->access->closed.insert(m_bench->makeCard("CARD", {}));
        app().start();
        m_bench->mountCard("CARD", {});
        QTRY_COMPARE(app().phase(), Phase::needsAccess());

        app().grantAccess();

        QTRY_COMPARE(app().phase(), Phase::noMedia());
        QVERIFY(m_bench->access->bookmarks.empty());
        QCOMPARE(m_bench->access->stopped.size(), size_t(1));
    }

    void aRefusedGrantChangesNothing()
    {
        m_bench->access->closed.insert(m_bench->makeCard("CARD", Workbench::shots(1)));
        m_bench->access->refuses = true;
        app().start();
        m_bench->mountCard("CARD", {});
        QTRY_COMPARE(app().phase(), Phase::needsAccess());

        app().grantAccess();

        QTest::qWait(50);
        QCOMPARE(app().phase(), Phase::needsAccess());
    }

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

    void aCardPulledWhileCullingShowsTheWaitingScreenAtOnce()
    {
        m_bench->cull(2);
        app().setZoomed(true);
        app().setConfirmingDelete(true);

        m_bench->volumes.unmount(m_bench->cardRoot);

        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        QVERIFY(!app().session());
        QVERIFY(!app().card());
        QVERIFY(!app().zoomed());
        QVERIFY(!app().confirmingDelete());
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

    void withOneCardSwitchingDoesNothing()
    {
        app().start();
        m_bench->mountCard("CARD", Workbench::shots(1));
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QVERIFY(!app().canSwitchCards());

        app().cycleCard();
        app().switchToCardAt(0);

        QTest::qWait(50);
        QCOMPARE(app().phase(), Phase::cardReady(false));
        QCOMPARE(app().changeCount(), 0);
    }

    void cyclingGoesThroughTheCardsAndWraps()
    {
        app().start();
        m_bench->mountCard("ONE", Workbench::shots(1));
        QTRY_COMPARE(app().cardName(), u"ONE"_s);
        m_bench->mountCard("TWO", Workbench::shots(1));
        m_bench->mountCard("EMPTY", {});
        QTRY_COMPARE(app().availableCards().size(), 3);

        app().cycleCard();
        QTRY_COMPARE(app().cardName(), u"TWO"_s);
        QCOMPARE(app().phase(), Phase::cardReady(false));
        app().cycleCard();
        QTRY_COMPARE(app().cardName(), u"EMPTY"_s);
        QCOMPARE(app().phase(), Phase::noMedia());
        app().cycleCard();
        QTRY_COMPARE(app().cardName(), u"ONE"_s);
    }

    void cyclingWithoutACurrentCardOpensTheFirst()
    {
        app().start();
        m_bench->mountCard("EMPTY1", {});
        m_bench->mountCard("EMPTY2", {});
        QTRY_COMPARE(app().availableCards().size(), 2);
        QCOMPARE(app().currentCardIndex(), -1);

        app().cycleCard();

        QTRY_COMPARE(app().cardName(), u"EMPTY1"_s);
        QCOMPARE(app().phase(), Phase::noMedia());
    }

    void cardsAreNotSwitchedWhileCulling()
    {
        m_bench->cull(2);
        m_bench->mountCard("OTHER", Workbench::shots(1));
        QTRY_COMPARE(app().availableCards().size(), 2);
        QVERIFY(!app().canSwitchCards());

        app().switchToCardAt(1);

        QTest::qWait(50);
        QCOMPARE(app().cardName(), u"CARD"_s);
        QCOMPARE(app().phase(), Phase::culling());
    }

    void switchingCardsDropsTheSession()
    {
        m_bench->cull(2);
        app().leaveCulling();
        m_bench->mountCard("OTHER", Workbench::shots(1));
        QTRY_VERIFY(app().canSwitchCards());

        app().cycleCard();

        QTRY_COMPARE(app().cardName(), u"OTHER"_s);
        QVERIFY(!app().hasSession());
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
        rejectAll();
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

    void undoBringsTheLastDecisionBackAndClampsTheSelection()
    {
        m_bench->cull(2);
        rejectAll();
        app().finishCulling();
        app().setReviewSelection(1);

        app().undoDecision();

        QCOMPARE(app().session()->rejectedCount(), 1);
        QCOMPARE(app().reviewSelection(), 0);
    }

    void deletingRemovesTheRejectsAndNothingElse()
    {
        m_bench->cull(3);
        app().session()->toggle(u"100_FUJI/DSCF0002"_s);
        app().finishCulling();
        app().setConfirmingDelete(true);

        app().performDelete();

        QCOMPARE(app().phase(), Phase::deleting(0, 1));
        QVERIFY(!app().confirmingDelete());
        QTRY_COMPARE(app().phase(), Phase::summary(1, 0, 2));
        QVERIFY(m_bench->has("DSCF0001.JPG"));
        QVERIFY(!m_bench->has("DSCF0002.JPG"));
        QVERIFY(m_bench->has("DSCF0003.JPG"));
        app().closeSummary();
        QCOMPARE(app().phase(), Phase::cardReady(false));
        QVERIFY(!app().hasSession());
    }

    /// With A.HEIC gone, A.JPG is found under its id.
    void afterADeletionNoPictureOfADeletedFileIsShown()
    {
        app().start();
        m_bench->cardRoot = m_bench->mountCard("CARD", {"A.JPG", "A.HEIC"});
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        const auto first = *app().session()->currentItem();
        QCOMPARE(first.id, u"100_FUJI/A"_s);
        QTRY_VERIFY(!m_bench->pipeline.cachedScreenImage(first).isNull());
        app().session()->toggle(first.id);
        app().finishCulling();
        app().performDelete();
        QTRY_COMPARE(app().phase(), Phase::summary(1, 0, 1));
        app().closeSummary();

        app().startCulling();

        QTRY_COMPARE(app().phase(), Phase::culling());
        const auto second = *app().session()->currentItem();
        QCOMPARE(second.id, first.id);
        QVERIFY(second.displayURL() != first.displayURL());
        QTRY_VERIFY(!m_bench->pipeline.cachedScreenImage(second).isNull());
        QCOMPARE(m_bench->pipeline.cachedScreenImage(second).width(),
                 Workbench::widthOfPictures(second.displayURL()));
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

    void deletingStartsOnlyFromTheReview()
    {
        m_bench->cull(2);
        rejectAll();

        app().performDelete();

        QCOMPARE(app().phase(), Phase::culling());
        QVERIFY(m_bench->has("DSCF0001.JPG"));
    }

    void aFailedDeletionCanBeRunAgainWithExactlyTheFailedItems()
    {
        m_bench->cull(3);
        app().session()->toggle(u"100_FUJI/DSCF0002"_s);
        app().session()->jump(2);
        app().finishCulling();
        m_bench->files->removalsFail = true;
        app().performDelete();
        QTRY_COMPARE(app().phase(), Phase::summary(0, 1, 2));

        app().closeSummary();
        QCOMPARE(app().phase(), Phase::cardReady(true));
        app().startCulling();

        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->rejectedIDs(), QSet<QString>{u"100_FUJI/DSCF0002"_s});
        QCOMPARE(app().session()->currentIndex(), 0);
    }

    void filesThatWereGoneAlreadyNeedNoSecondRun()
    {
        m_bench->cull(2);
        rejectAll();
        app().finishCulling();
        std::filesystem::remove(m_bench->cardRoot / "DCIM/100_FUJI/DSCF0001.JPG");
        std::filesystem::remove(m_bench->cardRoot / "DCIM/100_FUJI/DSCF0002.JPG");

        app().performDelete();

        QTRY_COMPARE(app().phase(), Phase::summary(0, 2, 0));
        app().closeSummary();
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::noMedia());
    }

    void nothingInterruptsADeletion()
    {
        m_bench->cull(2);
        rejectAll();
        app().finishCulling();
        m_bench->files->removalIsHeld = true;
        app().performDelete();

        app().backToCardScreen();
        app().backToCulling();
        app().goToReview();
        app().performDelete();
        app().cycleCard();

        QCOMPARE(app().phase(), Phase::deleting(0, 2));
        m_bench->files->removalIsHeld = false;
        QTRY_COMPARE(app().phase(), Phase::summary(2, 0, 0));
    }

    void aCardPulledWhileDeletingDropsTheResult()
    {
        m_bench->cull(2);
        rejectAll();
        app().finishCulling();
        m_bench->files->removalIsHeld = true;
        app().performDelete();
        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        m_bench->volumes.mount(m_bench->cardRoot, u"UUID-CARD"_s, u"CARD"_s);
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));

        m_bench->files->removalIsHeld = false;

        QTest::qWait(100);
        QCOMPARE(app().phase(), Phase::cardReady(false));
    }

    void progressNeverGoesBack()
    {
        m_bench->cull(9);
        rejectAll();
        app().finishCulling();
        qint64 last = 0;
        bool wentBack = false;
        connect(&app(), &AppState::phaseChanged, this, [&] {
            if (app().phase().kind == Phase::Kind::Deleting) {
                wentBack = wentBack || app().phase().doneCount < last;
                last = app().phase().doneCount;
            }
        });

        app().performDelete();

        QTRY_COMPARE(app().phase(), Phase::summary(9, 0, 0));
        QVERIFY(!wentBack);
        QTest::qWait(20);
        QCOMPARE(app().phase(), Phase::summary(9, 0, 0));
    }

    void anEqualValueIsNotTold()
    {
        m_bench->cull(2);
        QSignalSpy zoomed(&app(), &AppState::zoomedChanged);
        QSignalSpy phase(&app(), &AppState::phaseChanged);

        app().setZoomed(false);
        app().setZoomPan({0, 0});
        app().backToCulling();

        QCOMPARE(zoomed.count(), 0);
        QCOMPARE(phase.count(), 0);
        app().setZoomed(true);
        QCOMPARE(zoomed.count(), 1);
    }

    void listenersSeeTheWholeOperation()
    {
        m_bench->cull(2);
        app().setZoomed(true);
        bool wasWhole = false;
        connect(&app(), &AppState::changeCountChanged, this,
                [&] { wasWhole = app().phase() == Phase::review() && !app().zoomed(); });

        app().finishCulling();

        QVERIFY(wasWhole);
    }

    void quittingDuringADeletionWaitsForItsEnd()
    {
        m_bench->cull(2);
        rejectAll();
        app().finishCulling();

        app().performDelete();
        m_bench->appState.reset();

        QVERIFY(!m_bench->has("DSCF0001.JPG"));
        QVERIFY(!m_bench->has("DSCF0002.JPG"));
    }

private:
    [[nodiscard]] AppState &app() const { return *m_bench->appState; }

    void rejectAll() const
    {
        for (const auto &item : app().session()->items()) {
            app().session()->toggle(item.id);
        }
        app().recordChange();
    }

    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(AppStateTest)
#include "AppStateTest.moc"
