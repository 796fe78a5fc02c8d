// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/SessionKeeper.h"

#include "core/store/SessionStore.h"

#include <QTemporaryDir>
#include <QTest>

#include <fstream>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class SessionKeeperTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        m_folder = std::filesystem::path(m_home->path().toStdString()) / "sessions";
    }

    void cleanup() { m_keeper.reset(); }

    void aBurstOfChangesIsSavedOnceAndAsOfItsLast()
    {
        begin(300ms);
        for (int index = 1; index <= 10; ++index) {
            saveSoon(u"A"_s, index);
        }
        QVERIFY(!kept(u"A"_s));

        QTRY_VERIFY(kept(u"A"_s));
        QCOMPARE(*kept(u"A"_s), snapshot(u"A"_s, 10));
    }

    void aMomentThatIsNeverSavedIsNotSpelledOut()
    {
        begin(100ms);
        std::atomic_int spelledOut = 0;
        for (int index = 1; index <= 10; ++index) {
            m_keeper->saveSoon(u"A"_s, [&, moment = snapshot(u"A"_s, index)] {
                ++spelledOut;
                return moment;
            });
        }

        QTRY_COMPARE(kept(u"A"_s), snapshot(u"A"_s, 10));
        QCOMPARE(spelledOut, 1);
    }

    void eachChangePutsTheSaveOff()
    {
        begin(400ms);
        saveSoon(u"A"_s, 1);
        auto *delay = m_keeper->findChild<QTimer *>();
        QTRY_VERIFY(delay->remainingTime() < 300);

        saveSoon(u"A"_s, 2);

        QVERIFY(delay->remainingTime() > 300);
    }

    void aChangeOfAnotherCardSavesTheWaitingOneAtOnce()
    {
        begin(1h);
        saveSoon(u"A"_s, 1);

        saveSoon(u"B"_s, 2);

        QTRY_COMPARE(kept(u"A"_s), snapshot(u"A"_s, 1));
        QVERIFY(!kept(u"B"_s));
    }

    void loadingSavesTheWaitingOneOfThatCardFirst()
    {
        begin(1h);
        saveSoon(u"A"_s, 1);

        QVERIFY(!loaded(u"B"_s).snapshot);
        QVERIFY(!kept(u"A"_s));

        const auto answer = loaded(u"A"_s);
        QCOMPARE(answer.snapshot, snapshot(u"A"_s, 1));
        QVERIFY(!answer.lastSaveFailed);
    }

    void savingAtOnceTakesThePlaceOfTheWaitingOne()
    {
        begin(50ms);
        saveSoon(u"A"_s, 1);

        m_keeper->saveNow(snapshot(u"A"_s, 2));

        QCOMPARE(loaded(u"A"_s).snapshot, snapshot(u"A"_s, 2));
        QTest::qWait(100); // the waiting one would have been saved by now
        QCOMPARE(loaded(u"A"_s).snapshot, snapshot(u"A"_s, 2));
    }

    void savingAtOnceLeavesTheWaitingOneOfAnotherCardAlone()
    {
        begin(1h);
        saveSoon(u"A"_s, 1);

        m_keeper->saveNow(snapshot(u"B"_s, 2));

        QCOMPARE(loaded(u"B"_s).snapshot, snapshot(u"B"_s, 2));
        QVERIFY(!kept(u"A"_s));
        QCOMPARE(loaded(u"A"_s).snapshot, snapshot(u"A"_s, 1));
    }

    void forgettingDropsTheWaitingOneToo()
    {
        begin(50ms);
        m_keeper->saveNow(snapshot(u"A"_s, 1));
        saveSoon(u"A"_s, 2);

        m_keeper->forget(u"A"_s);

        QVERIFY(!loaded(u"A"_s).snapshot);
        QTest::qWait(100);
        QVERIFY(!loaded(u"A"_s).snapshot);
    }

    void aFailedSaveIsToldUntilOneSucceeds()
    {
        begin(1h);
        m_keeper->saveNow(snapshot(u"A"_s, 1));
        QVERIFY(!loaded(u"A"_s).lastSaveFailed);

        std::filesystem::rename(m_folder, away());
        m_keeper->saveNow(snapshot(u"A"_s, 2));
        QVERIFY(loaded(u"A"_s).lastSaveFailed);
        QVERIFY(!loaded(u"B"_s).lastSaveFailed);

        std::filesystem::rename(away(), m_folder);
        QVERIFY(loaded(u"A"_s).lastSaveFailed);
        QCOMPARE(loaded(u"A"_s).snapshot, snapshot(u"A"_s, 1));
        m_keeper->saveNow(snapshot(u"A"_s, 3));
        QVERIFY(!loaded(u"A"_s).lastSaveFailed);
    }

    void aFolderThatCannotBeMadeKeepsNothing()
    {
        std::ofstream(m_folder) << "in the way";
        begin(1h);

        m_keeper->prune(30, QDateTime::currentDateTimeUtc());
        m_keeper->saveNow(snapshot(u"A"_s, 1));

        QVERIFY(!loaded(u"A"_s).snapshot);
        m_keeper->forget(u"A"_s);
        QVERIFY(!loaded(u"A"_s).snapshot);
    }

    void withoutAFolderNothingIsKept()
    {
        m_keeper = std::make_unique<SessionKeeper>(std::nullopt, 1h);

        m_keeper->saveNow(snapshot(u"A"_s, 1));

        QVERIFY(!loaded(u"A"_s).snapshot);
    }

    void endingFinishesWhatWasBegunAndGivesUpWhatWaits()
    {
        begin(1h);
        m_keeper->saveNow(snapshot(u"A"_s, 1));
        saveSoon(u"B"_s, 2);

        m_keeper.reset();

        QCOMPARE(kept(u"A"_s), snapshot(u"A"_s, 1));
        QVERIFY(!kept(u"B"_s));
    }

    void pruningForgetsWhatIsOld()
    {
        begin(1h);
        m_keeper->saveNow(snapshot(u"A"_s, 1));

        m_keeper->prune(30, m_now.addDays(29));
        QVERIFY(loaded(u"A"_s).snapshot);
        m_keeper->prune(30, m_now.addDays(31));
        QVERIFY(!loaded(u"A"_s).snapshot);
    }

private:
    void begin(std::chrono::milliseconds delay)
    {
        m_keeper = std::make_unique<SessionKeeper>(m_folder, delay);
    }

    SessionSnapshot snapshot(const QString &uuid, qint64 index) const
    {
        return {.volumeUUID = uuid,
                .inventoryHash = QString(64, u'0'),
                .rejectedIDs = {u"100_FUJI/DSCF%1"_s.arg(index)},
                .currentIndex = index,
                .savedAt = m_now};
    }

    void saveSoon(const QString &uuid, qint64 index)
    {
        m_keeper->saveSoon(uuid, [moment = snapshot(uuid, index)] { return moment; });
    }

    std::optional<SessionSnapshot> kept(const QString &uuid) const
    {
        return SessionStore(m_folder).load(uuid);
    }

    SessionKeeper::Kept loaded(const QString &uuid)
    {
        const auto answer = m_keeper->load(uuid);
        // Waiting by result() would run it here and now, ahead of what is queued before it.
        (void)QTest::qWaitFor([&] { return answer.isFinished(); });
        return answer.isFinished() ? answer.result() : SessionKeeper::Kept();
    }

    std::filesystem::path away() const { return m_folder.native() + ".away"; }

    std::unique_ptr<QTemporaryDir> m_home;
    std::filesystem::path m_folder;
    QDateTime m_now = QDateTime::fromSecsSinceEpoch(1795000000, Qt::UTC);
    std::unique_ptr<SessionKeeper> m_keeper;
};

QTEST_GUILESS_MAIN(SessionKeeperTest)
#include "SessionKeeperTest.moc"
