// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/VideoPlayer.h"

#include <QElapsedTimer>
#include <QTest>

using namespace std::chrono_literals;
using Seconds = VideoPlayer::Seconds;

namespace {

class StillPlayer final : public VideoPlayer {
public:
    double rate() const override { return 0; }
    void play() override {}
    void pause() override {}
    Seconds currentTime() const override { return time; }
    std::optional<Seconds> duration() const override { return std::nullopt; }
    void seek(Seconds to) override { time = to; }

    Seconds time{3};
};

} // namespace

/// What all players have in common: their observers.
class VideoPlayerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anObserverIsToldTheTimeAgainAndAgain()
    {
        StillPlayer player;
        QList<double> told;
        QElapsedTimer since;
        since.start();

        (void)player.addPeriodicTimeObserver(20ms, [&](Seconds time) {
            told.append(time.count());
            player.time = Seconds(4);
        });

        QVERIFY(told.isEmpty()); // not before the caller is through
        QTRY_VERIFY(told.size() >= 3);
        QCOMPARE(told.first(3), QList<double>({3, 4, 4}));
        QVERIFY(since.elapsed() >= 38);
    }

    void whoIsRemovedIsToldNothing()
    {
        StillPlayer player;
        int first = 0;
        int second = 0;
        const auto token = player.addPeriodicTimeObserver(1ms, [&](Seconds) { ++first; });
        (void)player.addPeriodicTimeObserver(1ms, [&](Seconds) { ++second; });
        QCOMPARE(player.observerCount(), 2);

        player.removeTimeObserver(token);
        player.removeTimeObserver(token); // which is not known any more

        QCOMPARE(player.observerCount(), 1);
        QTRY_VERIFY(second > 3);
        QCOMPARE(first, 0);
    }

    void anObserverMayRemoveItself()
    {
        StillPlayer player;
        int calls = 0;
        VideoPlayer::ObserverToken token{};
        token = player.addPeriodicTimeObserver(1ms, [&](Seconds) {
            ++calls;
            player.removeTimeObserver(token);
        });

        QTRY_COMPARE(calls, 1);
        QCOMPARE(player.observerCount(), 0);
        QTest::qWait(10);
        QCOMPARE(calls, 1);
    }

    void observersEndWithThePlayer()
    {
        int calls = 0;
        {
            StillPlayer player;
            (void)player.addPeriodicTimeObserver(1ms, [&](Seconds) { ++calls; });
            QTRY_VERIFY(calls > 0);
        }
        const int before = calls;

        QTest::qWait(10);

        QCOMPARE(calls, before);
    }
};

QTEST_GUILESS_MAIN(VideoPlayerTest)
#include "VideoPlayerTest.moc"
