// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/announcements/Announcer.h"
#include "tests/ui/ScreenBench.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

/// What is said, and how often.
class AnnouncerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<ScreenBench>();
        m_announcer = std::make_unique<Announcer>();
        m_said.clear();
        connect(m_announcer.get(), &Announcer::announced, this,
                [this](const QString &text) { m_said.append(text); });
        m_announcer->setAppState(&m_bench->appState);
    }

    void cleanup()
    {
        m_announcer.reset();
        m_bench.reset();
    }

    void thePhasesOnTheWayAreSaid()
    {
        QTRY_COMPARE(said(), QStringList{u"Insert an SD card."_s});
        m_bench->appState.start();
        m_bench->cardRoot = m_bench->mountCard("CARD", {"A.JPG", "B.MOV", "C.JPG"});
        QTRY_COMPARE(said(), QStringList{u"CARD. Press Return to start culling."_s});
        m_bench->files->scanIsHeld = true;
        m_bench->press(KeyPress::Return);
        QTRY_COMPARE(said(), QStringList{u"Scanning CARD."_s});
        m_bench->letGo();
        QTRY_COMPARE(said(), QStringList{u"Culling. 1 of 3, A.JPG. 0 rejected."_s});
        m_bench->press(KeyPress::Escape);
        QTRY_COMPARE(said(), QStringList{u"CARD, session found. Press Return to resume."_s});
    }

    void aCardThatNeedsPermissionSaysSo()
    {
        m_bench->appState.start();
        m_bench->access->closed.insert(m_bench->mountLater("CARD", {"A.JPG"}));
        m_bench->mountCard("CARD", {});

        QTRY_COMPARE(
            said(),
            QStringList{
                u"CARD can be read only with your permission. Press Return to grant it."_s});
    }

    void aStepSaysWhereOneIs()
    {
        cull({"A.JPG", "B.MOV", "C.JPG"});

        m_bench->press(KeyPress::Right);

        QTRY_COMPARE(said(), QStringList{u"2 of 3, B.MOV, clip."_s});
    }

    void aRejectIsSaidOnceWithTheNextItem()
    {
        cull({"A.JPG", "B.JPG", "C.JPG"});

        m_bench->press(u"x"_s);

        QTRY_COMPARE(said(), QStringList{u"Rejected. 1 rejected. 2 of 3, B.JPG."_s});
        QTest::qWait(3 * Announcer::quietTime.count());
        QCOMPARE(m_said.size(), 0);
    }

    void aRejectThatIsTakenBackIsSaid()
    {
        cull({"A.JPG", "B.JPG"});
        m_bench->defaults.setBoolean(u"autoAdvanceOnReject"_s, false);
        m_bench->press(u"x"_s);
        QTRY_COMPARE(said(), QStringList{u"Rejected. 1 rejected."_s});

        m_bench->press(u"x"_s);
        QTRY_COMPARE(said(), QStringList{u"No longer rejected. 0 rejected."_s});

        m_bench->press(u"x"_s);
        QTRY_COMPARE(said(), QStringList{u"Rejected. 1 rejected."_s});
        m_bench->menuCommands.undoDecision();
        QTRY_COMPARE(said(), QStringList{u"No longer rejected. 0 rejected."_s});
    }

    void aHeldKeySaysOnlyWhereItEnded()
    {
        cull(ScreenBench::shots(60));

        for (int repeat = 0; repeat < 40; ++repeat) {
            m_bench->press(KeyPress::Right);
            QTest::qWait(5);
        }

        QTRY_COMPARE(said(), QStringList{u"41 of 60, DSCF0041.JPG."_s});
    }

    void zoomIsSaidAndAStepOutOfItSaysOnlyWhereOneIs()
    {
        cull({"A.JPG", "B.JPG"});
        m_bench->press(u"z"_s);
        QTRY_COMPARE(said(), QStringList{u"Zoom 100%."_s});
        m_bench->press(u"z"_s);
        QTRY_COMPARE(said(), QStringList{u"Whole picture."_s});
        m_bench->press(u"z"_s);
        QTRY_COMPARE(said(), QStringList{u"Zoom 100%."_s});

        m_bench->appState.selectItem(1);

        QTRY_COMPARE(said(), QStringList{u"2 of 2, B.JPG."_s});
    }

    void theReviewSaysWhatIsSelectedAndRescued()
    {
        cull({"A.JPG", "B.JPG", "C.JPG"});
        for (int reject = 0; reject < 3; ++reject) {
            m_bench->press(u"x"_s);
        }
        QTRY_COMPARE(said(), QStringList{u"Rejects — last look. 1 of 3, A.JPG. 3 rejected."_s});

        m_bench->press(KeyPress::Right);
        QTRY_COMPARE(said(), QStringList{u"2 of 3, B.JPG."_s});
        m_bench->press(KeyPress::Space);
        QTRY_COMPARE(said(), QStringList{u"Enlarged."_s});
        m_bench->press(u"x"_s);
        QTRY_COMPARE(said(),
                     QStringList{u"No longer rejected. 2 rejected. Grid. 2 of 2, C.JPG."_s});
        m_bench->press(u"x"_s);
        QTRY_COMPARE(said(), QStringList{u"No longer rejected. 1 rejected. 1 of 1, A.JPG."_s});
        m_bench->press(u"x"_s);
        QTRY_COMPARE(said(), QStringList{u"No longer rejected. 0 rejected. Nothing rejected."_s});
    }

    void aDeletionSaysItsBeginningAndItsOutcome()
    {
        cull({"A.JPG", "B.JPG", "C.JPG"});
        m_bench->press(u"x"_s);
        m_bench->press(u"x"_s);
        m_bench->press(KeyPress::Return);
        QTRY_COMPARE(m_said.size(), 1);
        m_said.clear();
        m_bench->files->removalIsHeld = true;
        m_bench->files->removalsFail = true;
        m_bench->appState.performDelete();
        QTRY_COMPARE(said(), QStringList{u"Deleting 2 files."_s});

        m_bench->letGo();

        QTRY_COMPARE(said(),
                     QStringList{u"Deleted 0 files, kept 1 items. 2 could not be deleted."_s});
    }

    void aCardThatGoesIsSaid()
    {
        cull({"A.JPG"});

        m_bench->volumes.unmount(m_bench->cardRoot);

        QTRY_COMPARE(said(), QStringList{u"Insert an SD card."_s});
    }

    void anotherCardOfTheSameNameIsSaid()
    {
        m_bench->appState.start();
        m_bench->volumes.mount(m_bench->mountLater("one", {"A.JPG"}), u"1"_s, u"UNTITLED"_s);
        m_bench->volumes.mount(m_bench->mountLater("two", {"A.JPG"}), u"2"_s, u"UNTITLED"_s);
        QTRY_VERIFY(m_bench->appState.canSwitchCards());
        QTRY_COMPARE(said(), QStringList{u"UNTITLED. Press Return to start culling."_s});

        m_bench->press(KeyPress::Tab);

        QTRY_COMPARE(said(), QStringList{u"UNTITLED. Press Return to start culling."_s});
    }

    void whatIsNotToldIsNotSaid()
    {
        cull({"A.JPG", "B.JPG"});

        m_bench->press(u"i"_s);
        m_bench->press(KeyPress::Left); // at the first item: nothing moves

        QTest::qWait(3 * Announcer::quietTime.count());
        QCOMPARE(m_said, QStringList());
    }

private:
    /// What was said since the last time somebody heard anything.
    QStringList said()
    {
        if (!m_said.isEmpty()) {
            m_heard = std::exchange(m_said, {});
        }
        return m_heard;
    }

    void cull(const std::vector<std::string> &shots)
    {
        m_bench->cull(shots);
        QTRY_VERIFY(!said().isEmpty() && m_heard.last().startsWith(u"Culling"));
    }

    std::unique_ptr<ScreenBench> m_bench;
    std::unique_ptr<Announcer> m_announcer;
    QStringList m_said;
    QStringList m_heard;
};

QTEST_MAIN(AnnouncerTest)
#include "AnnouncerTest.moc"
