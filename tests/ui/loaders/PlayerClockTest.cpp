// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/loaders/PlayerClock.h"
#include "tests/app/FakePlayer.h"

#include <QSignalSpy>
#include <QTest>

using Seconds = VideoPlayer::Seconds;

/// What a timeline knows of its player.
class PlayerClockTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itFollowsThePlayer()
    {
        FakePlayer player(m_log, "/clip.mov");
        m_log.duration = Seconds(8);
        PlayerClock clock;
        QCOMPARE(clock.position(), 0.0);
        QCOMPARE(clock.duration(), 1.0);

        clock.setPlayer(&player);
        m_log.time = Seconds(2.5);

        QCOMPARE(clock.position(), 0.0); // until the first tick
        QCOMPARE(clock.duration(), 8.0);
        QTRY_COMPARE(clock.position(), 2.5);
        m_log.time = Seconds(3);
        QTRY_COMPARE(clock.position(), 3.0);
    }

    void itHasOneObserverAndLeavesNone()
    {
        FakePlayer player(m_log, "/clip.mov");
        {
            PlayerClock clock;
            clock.setPlayer(&player);
            clock.setPlayer(&player);
            QCOMPARE(player.observerCount(), 1);
        }
        QCOMPARE(player.observerCount(), 0);
    }

    void anotherPlayerTakesThePlaceOfTheFirst()
    {
        FakePlayer first(m_log, "/a.mov");
        FakePlayer::Log otherLog;
        FakePlayer second(otherLog, "/b.mov");
        m_log.duration = Seconds(8);
        PlayerClock clock;
        clock.setPlayer(&first);
        m_log.time = Seconds(5);
        QTRY_COMPARE(clock.position(), 5.0);

        clock.setPlayer(&second);

        QCOMPARE(first.observerCount(), 0);
        QCOMPARE(second.observerCount(), 1);
        QCOMPARE(clock.position(), 0.0);
        QCOMPARE(clock.duration(), 1.0);
    }

    void aPlayerMayGoFirst()
    {
        auto player = std::make_unique<FakePlayer>(m_log, "/clip.mov");
        PlayerClock clock;
        clock.setPlayer(player.get());

        player.reset();

        QCOMPARE(clock.player(), nullptr);
        clock.seek(1);
    }

    void anUnknownDurationIsOneSecondUntilItIsKnown()
    {
        FakePlayer player(m_log, "/clip.mov");
        PlayerClock clock;
        clock.setPlayer(&player);
        QSignalSpy told(&clock, &PlayerClock::durationChanged);
        QCOMPARE(clock.range(), 1.0);

        m_log.duration = Seconds(12.5);

        QTRY_COMPARE(clock.range(), 12.5);
        m_log.duration = {}; // which keeps what was known
        QTest::qWait(150);
        QCOMPARE(clock.range(), 12.5);
        QCOMPARE(told.count(), 1);
    }

    void aShortClipHasARangeAllTheSame_data()
    {
        QTest::addColumn<double>("duration");
        QTest::addColumn<double>("range");
        QTest::newRow("none") << 0.0 << 0.1;
        QTest::newRow("shorter than a tenth") << 0.04 << 0.1;
        QTest::newRow("a tenth") << 0.1 << 0.1;
        QTest::newRow("longer") << 0.11 << 0.11;
    }

    void aShortClipHasARangeAllTheSame()
    {
        QFETCH(const double, duration);
        QFETCH(const double, range);
        FakePlayer player(m_log, "/clip.mov");
        m_log.duration = Seconds(duration);
        PlayerClock clock;

        clock.setPlayer(&player);

        QCOMPARE(clock.range(), range);
    }

    void aSeekShowsAtOnce()
    {
        FakePlayer player(m_log, "/clip.mov");
        PlayerClock clock;
        clock.setPlayer(&player);

        clock.seek(0.75);

        QCOMPARE(clock.position(), 0.75);
        QCOMPARE(m_log.time, Seconds(0.75));
    }

    void init() { m_log = {}; }

private:
    FakePlayer::Log m_log;
};

QTEST_GUILESS_MAIN(PlayerClockTest)
#include "PlayerClockTest.moc"
