// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/Workbench.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// Decisions that outlive the card's visit.
class AppStateSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<Workbench>(); }

    void tenQuickTogglesAreSavedOnceAsOfTheTenth()
    {
        withSaveDelay(300ms);
        m_bench->cull(3);
        m_bench->defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        SavesSeen saves(*m_bench);

        for (int count = 1; count <= 9; ++count) {
            (void)m_bench->press(u"x"_s);
        }
        m_bench->defaults.setBoolean(u"autoAdvanceOnReject"_s, true);
        (void)m_bench->press(KeyPress::Right);
        (void)m_bench->press(u"x"_s); // the tenth, and on to the third

        QTRY_COMPARE(saves.seen().size(), 1);
        QTest::qWait(400);
        QCOMPARE(saves.seen().size(), 1);
        const auto &saved = saves.seen().first();
        QCOMPARE(saved.rejectedIDs, ids({1, 2}));
        QCOMPARE(saved.currentIndex, 2);
    }

    void aSnapshotHoldsWhatTheSessionHolds()
    {
        m_bench->cull(3);

        (void)m_bench->press(u"x"_s);

        QTRY_VERIFY(stored());
        QCOMPARE(stored()->volumeUUID, u"UUID-CARD"_s);
        QCOMPARE(stored()->inventoryHash, SessionStore::inventoryHash(app().session()->items()));
        QCOMPARE(stored()->rejectedIDs, ids({1}));
        QCOMPARE(stored()->currentIndex, 1);
        QCOMPARE(stored()->savedAt.toSecsSinceEpoch(), m_bench->now.toSecsSinceEpoch());
    }

    void leftAtTheFirstItemIsSavedToo()
    {
        m_bench->cull(3);

        (void)m_bench->press(KeyPress::Left);

        QTRY_VERIFY(stored());
        QCOMPARE(stored()->currentIndex, 0);
    }

    void whatHasNothingToSaveLeavesTheWaitingSaveAlone()
    {
        withSaveDelay(200ms);
        m_bench->cull(3);
        (void)m_bench->press(u"x"_s);
        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_VERIFY(!app().hasSession());

        app().recordChange();

        QTRY_VERIFY(stored());
        QCOMPARE(stored()->rejectedIDs, ids({1}));
    }

    void aRemovalItselfSavesNothing()
    {
        withSaveDelay(1h);
        m_bench->cull(3);
        (void)m_bench->press(u"x"_s);

        m_bench->volumes.unmount(m_bench->cardRoot);

        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        QTest::qWait(50);
        QVERIFY(!stored());
    }

    void aCardThatComesBackIsResumedWhereItWasLeft()
    {
        withSaveDelay(1h); // the card comes back before its save is due
        m_bench->cull(5);
        (void)m_bench->press(KeyPress::Right);
        (void)m_bench->press(u"x"_s);
        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());

        m_bench->mountCard("CARD", {});

        QTRY_COMPARE(app().phase(), Phase::cardReady(true));
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->rejectedIDs(), ids({2}));
        QCOMPARE(app().session()->currentIndex(), 2);
        QVERIFY(!app().session()->undo());
    }

    void theNextVisitOfTheProgramResumesToo()
    {
        m_bench->cull(5);
        (void)m_bench->press(u"x"_s);
        QTRY_VERIFY(stored());

        m_bench->begin();
        app().start();

        QTRY_COMPARE(app().phase(), Phase::cardReady(true));
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->rejectedIDs(), ids({1}));
        QCOMPARE(app().session()->currentIndex(), 1);
    }

    void filesThatAreGoneAreNotResumed()
    {
        m_bench->cull(3);
        m_bench->rejectAll();
        app().session()->jump(2);
        app().recordChange();
        QTRY_VERIFY(stored());
        std::filesystem::remove(m_bench->cardRoot / "DCIM/100_FUJI/DSCF0002.JPG");
        std::filesystem::remove(m_bench->cardRoot / "DCIM/100_FUJI/DSCF0003.JPG");

        m_bench->begin();
        app().start();
        QTRY_COMPARE(app().phase(), Phase::cardReady(true)); // whatever the inventory is now
        app().startCulling();

        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->rejectedIDs(), ids({1}));
        QCOMPARE(app().session()->currentIndex(), 0);
    }

    void quittingGivesUpTheWaitingSave()
    {
        withSaveDelay(1h);
        m_bench->cull(3);
        (void)m_bench->press(u"x"_s);

        m_bench->begin();

        QVERIFY(!stored());
    }

    void oldSessionsAreForgottenAtTheStart()
    {
        m_bench->store().save({.volumeUUID = u"OLD"_s, .savedAt = m_bench->now.addDays(-31)});
        m_bench->store().save({.volumeUUID = u"NEW"_s, .savedAt = m_bench->now.addDays(-29)});

        app().start();

        QTRY_VERIFY(!m_bench->store().load(u"OLD"_s));
        QVERIFY(m_bench->store().load(u"NEW"_s));
    }

    void withoutAStoreNothingIsResumable()
    {
        m_bench->services.sessionFolder.reset();
        m_bench->begin();
        m_bench->cull(3);
        (void)m_bench->press(u"x"_s);
        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());

        m_bench->mountCard("CARD", {});

        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        QVERIFY(!app().session()->hasRejects());
    }

    void withoutAStoreDecisionsLastAsLongAsTheCardStays()
    {
        m_bench->services.sessionFolder.reset();
        m_bench->begin();
        m_bench->cull(3);
        (void)m_bench->press(u"x"_s);
        (void)m_bench->press(KeyPress::Escape);
        QCOMPARE(app().phase(), Phase::cardReady(true));

        app().startCulling();

        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->rejectedIDs(), ids({1}));
        QCOMPARE(app().session()->currentIndex(), 1);
    }

    void aFailedSaveLosesNothingWhileTheCardStays()
    {
        m_bench->cull(3);
        (void)m_bench->press(u"x"_s);
        QTRY_VERIFY(stored());
        const auto folder = m_bench->store().directory();
        std::filesystem::rename(folder, folder.native() + ".away");
        (void)m_bench->press(u"x"_s);
        (void)m_bench->press(KeyPress::Escape);
        letTheSaveFail();
        std::filesystem::rename(folder.native() + ".away", folder);
        QCOMPARE(stored()->rejectedIDs, ids({1}));

        app().startCulling();

        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->rejectedIDs(), ids({1, 2}));
    }

    void aSnapshotThatSomebodyRemovedLosesNothingWhileTheCardStays()
    {
        m_bench->cull(3);
        (void)m_bench->press(u"x"_s);
        (void)m_bench->press(KeyPress::Escape);
        QTRY_VERIFY(stored());
        m_bench->store().deleteSnapshot(u"UUID-CARD"_s);

        app().startCulling();

        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->rejectedIDs(), ids({1}));
    }

    void eachCardHasItsOwnDecisions()
    {
        withSaveDelay(1h);
        m_bench->cull(3);
        (void)m_bench->press(u"x"_s);
        (void)m_bench->press(KeyPress::Escape);
        m_bench->mountCard("TWO", Workbench::shots(3));
        QTRY_VERIFY(app().canSwitchCards());

        (void)m_bench->press(KeyPress::Tab);
        QTRY_COMPARE(app().cardName(), u"TWO"_s);
        QCOMPARE(app().phase(), Phase::cardReady(false));
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        QVERIFY(!app().session()->hasRejects());
        (void)m_bench->press(KeyPress::Right); // another card's change writes the waiting one

        QTRY_VERIFY(stored());
        QCOMPARE(stored()->rejectedIDs, ids({1}));
        QVERIFY(!m_bench->stored("TWO"));
    }

    void aDeletionWithFailuresKeepsExactlyTheFailedItems()
    {
        m_bench->cull(3);
        m_bench->rejectAll();
        app().finishCulling();
        m_bench->files->removalsFail = true;

        app().performDelete();

        QTRY_COMPARE(app().phase(), Phase::summary(0, 3, 0));
        QTRY_VERIFY(stored() && stored()->currentIndex == 0);
        QCOMPARE(stored()->rejectedIDs, ids({1, 2, 3}));
        QCOMPARE(stored()->inventoryHash, SessionStore::inventoryHash(app().session()->items()));
    }

    void aDeletionWhoseOnlyFailuresAreMissingFilesForgetsTheSession()
    {
        m_bench->cull(2);
        m_bench->rejectAll();
        app().finishCulling();
        QTRY_VERIFY(stored());
        std::filesystem::remove(m_bench->cardRoot / "DCIM/100_FUJI/DSCF0001.JPG");
        std::filesystem::remove(m_bench->cardRoot / "DCIM/100_FUJI/DSCF0002.JPG");

        app().performDelete();

        QTRY_COMPARE(app().phase(), Phase::summary(0, 2, 0));
        QTRY_VERIFY(!stored());
    }

    void aDeletionWithoutFailuresForgetsTheSessionAlsoTheWaitingSave()
    {
        withSaveDelay(100ms);
        m_bench->cull(2);
        m_bench->rejectAll();
        app().finishCulling();

        app().performDelete();

        QTRY_COMPARE(app().phase(), Phase::summary(2, 0, 0));
        QTest::qWait(200);
        QVERIFY(!stored());
    }

    void whatIsRecordedDuringAndAfterADeletionCountsButIsNotSaved()
    {
        m_bench->cull(2);
        m_bench->rejectAll();
        app().finishCulling();
        m_bench->files->removalIsHeld = true;
        app().performDelete();
        QTRY_VERIFY(stored());
        m_bench->store().deleteSnapshot(u"UUID-CARD"_s);
        const auto count = app().changeCount();

        app().recordChange();
        QTest::qWait(100);
        QVERIFY(!stored());
        m_bench->files->removalIsHeld = false;
        QTRY_COMPARE(app().phase(), Phase::summary(2, 0, 0));
        app().recordChange();

        QCOMPARE(app().changeCount(), count + 2);
        QTest::qWait(100);
        QVERIFY(!stored());
    }

    void theResultOfADroppedDeletionLeavesTheStoreAlone()
    {
        m_bench->cull(2);
        m_bench->rejectAll();
        app().finishCulling();
        QTRY_VERIFY(stored());
        m_bench->files->removalIsHeld = true;
        app().performDelete();
        QTRY_COMPARE(m_bench->files->removals.load(), 1);

        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        m_bench->files->removalIsHeld = false;

        QTest::qWait(100);
        QCOMPARE(app().phase(), Phase::waitingForCard());
        QCOMPARE(stored()->rejectedIDs, ids({1, 2}));
    }

private:
    /// Follows a file that is replaced by every save.
    class SavesSeen {
    public:
        explicit SavesSeen(const Workbench &bench)
            : m_bench(bench)
        {
            QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
            m_timer.start(1ms);
        }

        const QList<SessionSnapshot> &seen() const { return m_seen; }

    private:
        void look()
        {
            const auto snapshot = m_bench.stored("CARD");
            if (snapshot && (m_seen.isEmpty() || m_seen.last() != *snapshot)) {
                m_seen.append(*snapshot);
            }
        }

        const Workbench &m_bench;
        QList<SessionSnapshot> m_seen;
        QTimer m_timer;
    };

    AppState &app() const { return *m_bench->appState; }

    void withSaveDelay(std::chrono::milliseconds delay)
    {
        m_bench->services.saveDelay = delay;
        m_bench->begin();
    }

    /// What is in the queue before a loading is through when that is.
    void letTheSaveFail() const
    {
        const auto loaded = app().findChild<SessionKeeper *>()->load(u"UUID-CARD"_s);
        QTRY_VERIFY(loaded.isFinished());
        QVERIFY(loaded.result().lastSaveFailed);
    }

    std::optional<SessionSnapshot> stored() const { return m_bench->stored("CARD"); }

    static QSet<QString> ids(const QList<int> &numbers)
    {
        QSet<QString> ids;
        for (const int number : numbers) {
            ids.insert(u"100_FUJI/DSCF000%1"_s.arg(number));
        }
        return ids;
    }

    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(AppStateSessionTest)
#include "AppStateSessionTest.moc"
