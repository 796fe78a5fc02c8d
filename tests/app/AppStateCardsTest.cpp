// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/Workbench.h"

using namespace Qt::StringLiterals;

/// Cards that come and go, and which of them is worked on.
class AppStateCardsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<Workbench>(); }

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
        QCOMPARE(m_bench->access->stopCount(), size_t(0));
        m_bench->volumes.unmount(root);
        QTRY_COMPARE(m_bench->access->stopCount(), size_t(1));
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
        QTRY_COMPARE(m_bench->access->stopCount(), size_t(1));
    }

    void aRefusedGrantChangesNothing()
    {
        m_bench->access->closed.insert(m_bench->makeCard("CARD", Workbench::shots(1)));
        m_bench->dialog.user = FakeDialog::User::Refuses;
        app().start();
        m_bench->mountCard("CARD", {});
        QTRY_COMPARE(app().phase(), Phase::needsAccess());

        app().grantAccess();

        QTest::qWait(50);
        QCOMPARE(app().phase(), Phase::needsAccess());
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

    void aWriteProtectedCardIsKnownBeforehand()
    {
        const auto root = m_bench->makeCard("LOCKED", Workbench::shots(1));
        m_bench->files->makeReadOnly(root);
        app().start();
        m_bench->mountCard("LOCKED", {});
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QVERIFY(app().cardIsReadOnly());

        m_bench->mountCard("CARD", Workbench::shots(1));
        QTRY_VERIFY(app().canSwitchCards());
        app().cycleCard();
        QTRY_COMPARE(app().cardName(), u"CARD"_s);
        QVERIFY(!app().cardIsReadOnly());
        app().cycleCard();
        QTRY_VERIFY(app().cardIsReadOnly());
        m_bench->volumes.setVolumes({});
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        QVERIFY(!app().cardIsReadOnly());
    }

    void aGrantTellsThatTheCardIsWriteProtected()
    {
        const auto root = m_bench->makeCard("LOCKED", Workbench::shots(1));
        m_bench->files->makeReadOnly(root);
        m_bench->access->closed.insert(root);
        app().start();
        m_bench->mountCard("LOCKED", {});
        QTRY_COMPARE(app().phase(), Phase::needsAccess());
        QVERIFY(!app().cardIsReadOnly());

        app().grantAccess();

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QVERIFY(app().cardIsReadOnly());
    }

    void aCardThatHangsHoldsUpNoOther()
    {
        m_bench = std::make_unique<Workbench>(std::chrono::milliseconds(20));
        const auto slow = m_bench->makeCard("SLOW", Workbench::shots(1));
        m_bench->access->hold(slow);
        app().start();
        m_bench->mountCard("SLOW", {});
        m_bench->mountCard("CARD", Workbench::shots(1));

        QTRY_COMPARE(app().cardName(), u"CARD"_s);
        QCOMPARE(app().phase(), Phase::cardReady(false));
        m_bench->access->letGo(slow);
        QTest::qWait(50);
        QCOMPARE(app().cardName(), u"CARD"_s);
    }

    void aCardThatHangsIsOpenedWhenItAnswers()
    {
        m_bench = std::make_unique<Workbench>(std::chrono::milliseconds(10));
        const auto slow = m_bench->makeCard("SLOW", Workbench::shots(1));
        m_bench->access->hold(slow);
        app().start();
        m_bench->mountCard("SLOW", {});
        QTest::qWait(50);
        QCOMPARE(app().phase(), Phase::waitingForCard());

        m_bench->access->letGo(slow);

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QCOMPARE(app().cardName(), u"SLOW"_s);
    }

    void untilAnotherCardAnswersTheCurrentOneStands()
    {
        app().start();
        m_bench->mountCard("ONE", Workbench::shots(1));
        QTRY_COMPARE(app().cardName(), u"ONE"_s);
        const auto slow = m_bench->makeCard("SLOW", Workbench::shots(1));
        m_bench->access->hold(slow);
        m_bench->mountCard("SLOW", {});
        QTRY_VERIFY(app().canSwitchCards());
        app().cycleCard();
        QTest::qWait(50);
        QCOMPARE(app().cardName(), u"ONE"_s);
        QCOMPARE(app().phase(), Phase::cardReady(false));
        m_bench->volumes.rename(slow, u"RENAMED"_s);
        QTRY_VERIFY(app().availableCardNames().contains(u"RENAMED"_s));

        m_bench->access->letGo(slow);

        QTRY_COMPARE(app().cardName(), u"RENAMED"_s);
    }

    void aCardThatAnswersAfterCullingHasBegunIsNotOpened()
    {
        app().start();
        m_bench->mountCard("ONE", Workbench::shots(1));
        QTRY_COMPARE(app().cardName(), u"ONE"_s);
        const auto slow = m_bench->makeCard("SLOW", Workbench::shots(1));
        m_bench->access->hold(slow);
        m_bench->mountCard("SLOW", {});
        QTRY_VERIFY(app().canSwitchCards());
        app().cycleCard();
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        app().leaveCulling();

        m_bench->access->letGo(slow);

        QTest::qWait(50);
        QCOMPARE(app().cardName(), u"ONE"_s);
        QVERIFY(app().hasSession());
    }

    void aRenamedCardKeepsItsSessionAndItsDecisions()
    {
        m_bench->cull(3);
        app().session()->toggleCurrent();
        app().recordChange();
        app().leaveCulling();
        m_bench->mountCard("OTHER", Workbench::shots(1));
        QTRY_VERIFY(app().canSwitchCards());

        m_bench->volumes.rename(m_bench->cardRoot, u"HOLIDAY"_s);

        QTRY_COMPARE(app().cardName(), u"HOLIDAY"_s);
        QCOMPARE(app().currentCardIndex(), 0);
        QCOMPARE(app().phase(), Phase::cardReady(true));
        QVERIFY(app().hasSession());
        app().switchToCardAt(0); // the same card
        QTest::qWait(50);
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->rejectedCount(), 1);
    }

    void fromARenamedCardTabGoesToTheOtherOne()
    {
        m_bench->cull(1);
        app().leaveCulling();
        m_bench->mountCard("OTHER", Workbench::shots(1));
        QTRY_VERIFY(app().canSwitchCards());
        m_bench->volumes.rename(m_bench->cardRoot, u"HOLIDAY"_s);
        QTRY_COMPARE(app().availableCardNames().first(), u"HOLIDAY"_s);

        app().cycleCard();

        QTRY_COMPARE(app().cardName(), u"OTHER"_s);
    }

    void anotherCardAtTheSamePlaceIsAnotherCard()
    {
        m_bench->cull(2);

        m_bench->volumes.setVolumes({{.mountPoint = m_bench->cardRoot,
                                      .uuid = u"another"_s,
                                      .label = u"CARD"_s,
                                      .isRemovable = true}});

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        QVERIFY(!app().hasSession());
    }

    void whoGoesBackToCullingWishesForNoOtherCard()
    {
        m_bench->cull(2);
        (void)m_bench->press(KeyPress::Escape);
        const auto two = m_bench->makeCard("TWO", Workbench::shots(1));
        m_bench->access->hold(two);
        m_bench->mountCard("TWO", {});
        QTRY_VERIFY(app().canSwitchCards());
        app().cycleCard();
        app().backToCulling();
        QCOMPARE(app().phase(), Phase::culling());
        (void)m_bench->press(KeyPress::Escape);

        m_bench->access->letAllGo();

        QTest::qWait(50);
        QCOMPARE(app().cardName(), u"CARD"_s);
    }

    void backToACardWithDecisionsOffersToResume()
    {
        m_bench->cull(2);
        (void)m_bench->press(u"x"_s);
        (void)m_bench->press(KeyPress::Escape);
        m_bench->mountCard("TWO", Workbench::shots(1));
        QTRY_VERIFY(app().canSwitchCards());
        app().cycleCard();
        QTRY_COMPARE(app().cardName(), u"TWO"_s);
        QCOMPARE(app().phase(), Phase::cardReady(false));

        app().cycleCard();

        QTRY_COMPARE(app().cardName(), u"CARD"_s);
        QCOMPARE(app().phase(), Phase::cardReady(true));
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

private:
    [[nodiscard]] AppState &app() const { return *m_bench->appState; }

    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(AppStateCardsTest)
#include "AppStateCardsTest.moc"
