// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MpvPlayer.h"
#include "platform/media/VideoFrames.h"
#include "platform/media/VideoPlayers.h"
#include "tests/support/CodedClips.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Seconds = VideoPlayer::Seconds;

namespace {

/// A player whose pictures are looked at as images.
class Watched {
public:
    Watched(VideoPlayers &players, const std::filesystem::path &file, QSize pixels = {240, 200})
        : m_owner(players.player(file))
        , player(static_cast<MpvPlayer &>(*m_owner))
        , frames(player.frames())
    {
        // Whoever waits for a picture wakes up at once.
        frames->showImages(pixels, [] {
            QMetaObject::invokeMethod(
                qApp, [] {}, Qt::QueuedConnection);
        });
    }

    [[nodiscard]] int shown(const CodedClip &clip) const { return clip.frameIn(frames->image()); }

    void drop() { m_owner.reset(); }

private:
    std::unique_ptr<VideoPlayer> m_owner;

public:
    MpvPlayer &player;
    std::shared_ptr<VideoFrames> frames;
};

/// As QTRY_VERIFY, but as soon as anything happens.
void waitUntil(const std::function<bool()> &isTrue)
{
    QDeadlineTimer patience(5s);
    QTimer wake;
    wake.start(50ms);
    while (!isTrue() && !patience.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

} // namespace

Q_DECLARE_METATYPE(CodedClip)

/// Clips played for real, drawn by the processor.
class MpvPlayerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!CodedClip::canBeMade()) {
            QSKIP("the ffmpeg command is missing");
        }
    }

    void aSeekShowsTheFrameThatContainsTheTime_data()
    {
        QTest::addColumn<CodedClip>("clip");
        for (const auto &clip : CodedClips::all()) {
            QTest::newRow(qPrintable(clip.name)) << clip;
        }
    }

    void aSeekShowsTheFrameThatContainsTheTime()
    {
        QFETCH(const CodedClip, clip);
        Watched watched(m_players, clip.file());
        QTRY_COMPARE(watched.shown(clip), 0);
        QRandomGenerator dice(1);
        for (int i = 0; i < 200; ++i) {
            const double to = dice.bounded(clip.end());
            watched.player.seek(Seconds(to));
            waitUntil([&] {
                return !watched.player.isSeeking() && watched.shown(clip) == clip.frameAt(to);
            });
            QCOMPARE(watched.shown(clip), clip.frameAt(to));
            QCOMPARE(watched.player.currentTime().count(), to);
        }
    }

private:
    VideoPlayers m_players{{.hardwareDecoding = false, .sound = false}};
};

QTEST_MAIN(MpvPlayerTest)
#include "MpvPlayerTest.moc"
