// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/Workbench.h"

#include <thread>

using namespace Qt::StringLiterals;

/// The deletion and the summary.
class AppStateDeletionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<Workbench>(); }

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

    /// A notice of the change may take its time.
    void aCardExchangedForANamesakeUnnoticedLosesNothing()
    {
        m_bench->cull(3);
        m_bench->rejectAll();
        app().finishCulling();
        auto pulled = m_bench->cardRoot;
        pulled += ".pulled";
        std::filesystem::rename(m_bench->cardRoot, pulled);
        std::filesystem::copy(pulled, m_bench->cardRoot, std::filesystem::copy_options::recursive);

        app().performDelete();

        QTRY_COMPARE(app().phase(), Phase::summary(0, 3, 0));
        QVERIFY(m_bench->has("DSCF0001.JPG"));
        QVERIFY(m_bench->has("DSCF0002.JPG"));
        QVERIFY(m_bench->has("DSCF0003.JPG"));
        m_bench->cardRoot = pulled;
        QVERIFY(m_bench->has("DSCF0001.JPG"));
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

    void deletingStartsOnlyFromTheReview()
    {
        m_bench->cull(2);
        m_bench->rejectAll();

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
        m_bench->rejectAll();
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
        m_bench->rejectAll();
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
        m_bench->rejectAll();
        app().finishCulling();
        m_bench->files->removalIsHeld = true;
        app().performDelete();
        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        m_bench->volumes.mount(m_bench->cardRoot, u"UUID-CARD"_s, u"CARD"_s);
        QTRY_COMPARE(app().phase(), Phase::cardReady(true));

        m_bench->files->removalIsHeld = false;

        QTest::qWait(100);
        QCOMPARE(app().phase(), Phase::cardReady(true));
    }

    void aCardThatIsDroppedLosesNoFileAfterTheOneInHand()
    {
        m_bench->cull(3);
        m_bench->rejectAll();
        app().finishCulling();
        m_bench->files->removalIsHeld = true;
        app().performDelete();
        QTRY_COMPARE(m_bench->files->removals.load(), 1);
        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());

        m_bench->files->removalIsHeld = false;

        QTRY_VERIFY(!m_bench->has("DSCF0001.JPG"));
        QTest::qWait(50);
        QCOMPARE(m_bench->files->removals.load(), 1);
        QVERIFY(m_bench->has("DSCF0002.JPG"));
        QCOMPARE(app().phase(), Phase::waitingForCard());
    }

    void progressGrowsToTheLastFileAndEndsWithTheResult()
    {
        m_bench->cull(5);
        m_bench->rejectAll();
        app().finishCulling();
        QList<Phase> phases;
        connect(&app(), &AppState::phaseChanged, this, [&] { phases.append(app().phase()); });
        m_bench->files->removalIsHeld = true;

        app().performDelete();
        m_bench->files->removalIsHeld = false;

        QTRY_COMPARE(app().phase(), Phase::summary(5, 0, 0));
        QTest::qWait(20);
        QCOMPARE(phases.first(), Phase::deleting(0, 5));
        QCOMPARE(phases.last(), Phase::summary(5, 0, 0));
        QCOMPARE(phases.at(phases.size() - 2), Phase::deleting(5, 5));
        for (qsizetype place = 1; place < phases.size() - 1; ++place) {
            QCOMPARE(phases.at(place).kind, Phase::Kind::Deleting);
            QVERIFY(phases.at(place).doneCount > phases.at(place - 1).doneCount);
        }
    }

    void aRunJudgesTheRejectsItTookAlong()
    {
        m_bench->cull(3);
        app().session()->toggle(u"100_FUJI/DSCF0001"_s);
        app().finishCulling();
        m_bench->files->removalIsHeld = true;
        m_bench->files->removalsFail = true;
        app().performDelete();

        app().session()->toggle(u"100_FUJI/DSCF0001"_s);
        app().session()->toggle(u"100_FUJI/DSCF0002"_s);
        m_bench->files->removalIsHeld = false;

        QTRY_COMPARE(app().phase(), Phase::summary(0, 1, 2));
        QTRY_VERIFY(m_bench->stored("CARD"));
        QCOMPARE(m_bench->stored("CARD")->rejectedIDs, QSet<QString>{u"100_FUJI/DSCF0001"_s});
        QVERIFY(m_bench->has("DSCF0002.JPG"));
    }

    void aDeletionThatHangsHoldsUpNoOtherCard()
    {
        m_bench->cull(1);
        m_bench->rejectAll();
        app().finishCulling();
        const auto stuck = m_bench->files->cardGate;
        *stuck = true;
        app().performDelete();
        QTRY_COMPARE(m_bench->files->removals.load(), 1);
        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        m_bench->files->cardGate = std::make_shared<std::atomic_bool>(false);

        m_bench->cardRoot = m_bench->mountCard("TWO", Workbench::shots(2));
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        m_bench->rejectAll();
        app().finishCulling();
        app().performDelete();
        QTRY_COMPARE(app().phase(), Phase::summary(2, 0, 0));

        app().finish(); // does not wait for the card that hangs, either
        *stuck = false;
    }

    /// With A.HEIC gone, A.JPG is found under its id.
    void anInterruptedDeletionMakesNoRejectsOfOtherFiles()
    {
        app().start();
        m_bench->cardRoot = m_bench->mountCard("CARD", {"A.JPG", "A.HEIC", "B.JPG"});
        QTRY_COMPARE(app().phase(), Phase::cardReady(false));
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        app().session()->toggle(u"100_FUJI/A"_s);
        app().session()->toggle(u"100_FUJI/B"_s);
        app().recordChange();
        app().finishCulling();
        m_bench->files->removalIsHeld = true;
        app().performDelete();
        QTRY_COMPARE(m_bench->files->removals.load(), 1);
        m_bench->volumes.unmount(m_bench->cardRoot);
        QTRY_COMPARE(app().phase(), Phase::waitingForCard());
        m_bench->files->removalIsHeld = false;
        QTRY_VERIFY(!m_bench->has("A.HEIC"));

        m_bench->mountCard("CARD", {});

        QTRY_COMPARE(app().phase(), Phase::cardReady(true));
        app().startCulling();
        QTRY_COMPARE(app().phase(), Phase::culling());
        QCOMPARE(app().session()->items().size(), 2);
        QCOMPARE(app().session()->rejectedIDs(), QSet<QString>{u"100_FUJI/B"_s});
    }

    void quittingDuringADeletionEndsAfterTheFileInHand()
    {
        m_bench->cull(3);
        m_bench->rejectAll();
        app().finishCulling();
        m_bench->files->removalIsHeld = true;
        app().performDelete();
        QTRY_COMPARE(m_bench->files->removals.load(), 1);
        std::atomic_bool quits = false;
        std::jthread letsGo([&] {
            quits.wait(false);
            QThread::msleep(100); // until it waits for the run
            m_bench->files->removalIsHeld = false;
        });

        quits = true;
        quits.notify_one();
        m_bench->appState.reset();

        QCOMPARE(m_bench->files->removals.load(), 1);
        QVERIFY(!m_bench->has("DSCF0001.JPG"));
        QVERIFY(m_bench->has("DSCF0002.JPG"));
        QVERIFY(m_bench->has("DSCF0003.JPG"));
    }

private:
    [[nodiscard]] AppState &app() const { return *m_bench->appState; }

    std::unique_ptr<Workbench> m_bench;
};

QTEST_GUILESS_MAIN(AppStateDeletionTest)
#include "AppStateDeletionTest.moc"
