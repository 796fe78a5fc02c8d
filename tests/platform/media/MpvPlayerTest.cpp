// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MpvPlayer.h"
#include "platform/media/PosterFrame.h"
#include "platform/media/VideoFrames.h"
#include "platform/media/VideoPlayers.h"
#include "tests/support/ClipBytes.h"
#include "tests/support/CodedClips.h"
#include "tests/support/OpenFiles.h"
#include "tests/support/WaitUntil.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <fstream>

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
        QVERIFY(waitUntil([&] { return watched.shown(clip) == 0; }));
        QRandomGenerator dice(1);

        for (int i = 0; i < 200; ++i) {
            const double to = dice.bounded(clip.end());
            watched.player.seek(Seconds(to));
            (void)waitUntil([&] {
                return !watched.player.isSeeking() && watched.shown(clip) == clip.frameAt(to);
            });
            QCOMPARE(watched.shown(clip), clip.frameAt(to));
            QCOMPARE(watched.player.currentTime().count(), to);
        }
    }

    void ofSeveralTracksTheEnabledOneIsShown()
    {
        const QTemporaryDir folder;
        const auto path = std::filesystem::path(folder.path().toStdString()) / "tracks.mov";
        const auto disabled = CodedClips::all().at(0);
        const auto clip = CodedClips::all().at(4); // other frames at other times, and turned
        QStringList arguments{u"-v"_s, u"error"_s};
        for (const auto &source : {disabled.file(), clip.file()}) {
            arguments += {u"-i"_s, QString::fromStdString(source.string())};
        }
        arguments += {u"-map"_s,
                      u"0:v"_s,
                      u"-map"_s,
                      u"1:v"_s,
                      u"-c"_s,
                      u"copy"_s,
                      u"-disposition:v:0"_s,
                      u"0"_s,
                      u"-disposition:v:1"_s,
                      u"default"_s,
                      QString::fromStdString(path.string())};
        QCOMPARE(QProcess::execute(u"ffmpeg"_s, arguments), 0);
        QCOMPARE(posterFrame(path).size(), clip.shownSize());
        Watched watched(m_players, path);
        QVERIFY(waitUntil([&] { return watched.shown(clip) == 0; }));
        QRandomGenerator dice(3);

        for (int i = 0; i < 50; ++i) {
            const double to = dice.bounded(clip.end());
            watched.player.seek(Seconds(to));
            QVERIFY(waitUntil([&] { return !watched.player.isSeeking(); }));
            QVERIFY(waitUntil([&] { return watched.shown(clip) == clip.frameAt(to); }));
        }
    }

    void scrubbingEndsOnTheNewestFrame_data()
    {
        QTest::addColumn<bool>("plays");
        QTest::newRow("paused") << false;
        QTest::newRow("while it plays") << true;
    }

    void scrubbingEndsOnTheNewestFrame()
    {
        QFETCH(const bool, plays);
        const auto clip = CodedClips::all().at(0);
        Watched watched(m_players, clip.file());
        QVERIFY(waitUntil([&] { return watched.shown(clip) == 0; }));
        if (plays) {
            watched.player.play();
        }
        QSet<int> seen;

        double to = 0;
        // In a second; for longer where that is not enough for some frames on the way to be seen.
        for (int i = 0; i < 60 || (seen.size() <= 5 && i < 600); ++i) {
            to = 1 + (i % 60) * 0.1;
            watched.player.seek(Seconds(to));
            QTest::qWait(16);
            seen.insert(watched.shown(clip));
        }

        QVERIFY(waitUntil([&] { return !watched.player.isSeeking(); }));
        watched.player.pause();
        QVERIFY(waitUntil([&] { return watched.shown(clip) >= clip.frameAt(to); }));
        if (!plays) {
            QCOMPARE(watched.shown(clip), clip.frameAt(to));
        }
        QVERIFY(waitUntil([&] {
            return watched.shown(clip) <= clip.frameAt(watched.player.currentTime().count() + 0.2);
        }));
        QVERIFY(seen.size() > 5);
    }

    void itPlaysInRealTimeAndStopsAtTheEnd_data()
    {
        QTest::addColumn<CodedClip>("clip");
        QTest::newRow("without sound") << CodedClip::h264(u"end.mp4"_s, 30).at(25, 1);
        auto withSound = CodedClip::h264(u"end.mov"_s, 30).at(25, 1);
        withSound.hasSound = true;
        QTest::newRow("with sound") << withSound;
    }

    void itPlaysInRealTimeAndStopsAtTheEnd()
    {
        QFETCH(const CodedClip, clip);
        Watched watched(m_players, clip.file());
        auto &player = watched.player;
        QCOMPARE(player.rate(), 0.0);
        QVERIFY(!player.duration());
        QElapsedTimer since;
        since.start();

        player.play();

        QCOMPARE(player.rate(), 1.0);
        QVERIFY(waitUntil([&] { return player.rate() == 0; }));
        QVERIFY(since.elapsed() >= 1100);
        QVERIFY(std::abs(player.duration()->count() - 1.2) < 0.05);
        QCOMPARE(player.currentTime(), *player.duration());
        QVERIFY(waitUntil([&] { return watched.shown(clip) == 29; }));

        player.seek(Seconds(0.5)); // back from the end it stays stopped
        QVERIFY(waitUntil([&] { return watched.shown(clip) == 12; }));
        QCOMPARE(player.rate(), 0.0);

        player.seek(Seconds(9)); // as far as it goes
        QVERIFY(waitUntil([&] { return !player.isSeeking() && watched.shown(clip) == 29; }));
        QCOMPARE(player.currentTime(), *player.duration());

        player.play(); // from the beginning
        QVERIFY(player.currentTime() < Seconds(0.1));
        QVERIFY(waitUntil([&] { return watched.shown(clip) < 29 && !player.isSeeking(); }));
        QVERIFY(waitUntil([&] { return player.currentTime() > Seconds(0.5); }));
        player.pause();
        QCOMPARE(player.rate(), 0.0);
        QVERIFY(waitUntil([&] { // as soon as the clip has heard of it
            const auto paused = player.currentTime();
            QTest::qWait(200);
            return player.currentTime() == paused;
        }));
    }

    void aClipThatIsCutEndsWhereItsFramesDo()
    {
        const QTemporaryDir folder;
        const auto path = std::filesystem::path(folder.path().toStdString()) / "cut.mp4";
        auto clip = CodedClip::h264(u"index-first.mp4"_s, 100).at(25, 1);
        clip.coding +=
            {u"-g"_s, u"12"_s, u"-keyint_min"_s, u"12"_s, u"-movflags"_s, u"faststart"_s};
        const ClipBytes bytes(clip.file());
        bytes.writeFirst(bytes.size() * 2 / 3, path);
        Watched watched(m_players, path);
        auto &player = watched.player;
        QVERIFY(waitUntil([&] { return watched.shown(clip) == 0; }));

        player.seek(Seconds(1));
        player.play();
        QVERIFY(waitUntil([&] { return player.rate() == 0; }));

        QCOMPARE(player.duration(), Seconds(4));
        const double end = player.currentTime().count();
        QVERIFY2(end > 1.2 && end < 3.5, qPrintable(QString::number(end)));
        const int last = watched.shown(clip);
        QVERIFY(std::abs(last - clip.frameAt(end - 0.001)) <= 1); // the one that is cut may be seen

        player.seek(Seconds(end - 0.5)); // another frame
        QVERIFY(waitUntil([&] { return !player.isSeeking(); }));
        QVERIFY(waitUntil([&] { return watched.shown(clip) == clip.frameAt(end - 0.5); }));
        QCOMPARE(player.currentTime().count(), end - 0.5);

        for (const double missing : {3.8, 4.0, 9.0}) { // goes as far as there are frames
            player.seek(Seconds(missing));
            QVERIFY(waitUntil(
                [&] { return !player.isSeeking() && player.currentTime().count() <= end; }));
            QVERIFY(waitUntil([&] { return std::abs(watched.shown(clip) - last) <= 1; }));
            QCOMPARE(player.currentTime().count(), end);
        }
        player.play(); // from the beginning
        QVERIFY(player.currentTime() < Seconds(0.1));
        QVERIFY(waitUntil([&] { return !player.isSeeking() && watched.shown(clip) < last; }));
        QCOMPARE(player.rate(), 1.0);
    }

    void whatCannotBePlayedStaysStoppedWithoutAWord_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a text") << QByteArray("No clip.");
        QTest::newRow("a list of other files")
            << QByteArray("#EXTM3U\n#EXTINF:1,\n") + CodedClips::all().at(0).file().c_str() + "\n";
        QTest::newRow("a list of an editor")
            << QByteArray("# mpv EDL v0\n") + CodedClips::all().at(0).file().c_str() + "\n";
        QTest::newRow("a matroska file")
            << QByteArray::fromHex("1a45dfa3a34286810142f7810142f2810442f381084282846d6b7673");
    }

    void whatCannotBePlayedStaysStoppedWithoutAWord()
    {
        QFETCH(const QByteArray, content);
        const QTemporaryDir folder;
        const auto file = std::filesystem::path(folder.path().toStdString()) / "clip.MOV";
        std::ofstream(file) << content.toStdString();
        Watched watched(m_players, file);

        watched.player.play();

        QVERIFY(waitUntil([&] { return watched.player.hasFailed(); }));
        QCOMPARE(watched.player.rate(), 0.0);
        QVERIFY(!watched.player.duration());
        QVERIFY(watched.frames->image().isNull());
        watched.player.seek(Seconds(1));
        watched.player.play();
        QCOMPARE(watched.player.rate(), 0.0);
        QCOMPARE(watched.player.currentTime(), Seconds(0));
    }

    void aFileThatIsNotThereOrNoneStaysStopped()
    {
        const QTemporaryDir folder;
        const auto inFolder = folder.path().toStdString();
        for (const std::string &path :
             {std::string("/nowhere/clip.mov"), inFolder, std::string("/dev/zero")}) {
            Watched watched(m_players, path);
            watched.player.play();
            QVERIFY(waitUntil([&] { return watched.player.hasFailed(); }));
            QCOMPARE(watched.player.rate(), 0.0);
        }
    }

    void theFileIsLetGoOfSoon()
    {
        const auto clip = CodedClips::all().at(1);
        Watched watched(m_players, clip.file());
        watched.player.play();
        QVERIFY(waitUntil([&] { return watched.player.currentTime() > Seconds(0.1); }));
        QCOMPARE(OpenFiles::countOf(clip.file()), 1);

        watched.drop();

        QVERIFY(waitUntil([&] { return OpenFiles::countOf(clip.file()) == 0; }));
        QVERIFY(waitUntil([this] { return m_players.clipCount() == 0; }));
    }

    void clipsThatAreLeftDoNotWaitBehindThoseAtWork()
    {
        const auto clip = CodedClips::all().at(8);
        std::vector<std::unique_ptr<VideoPlayer>> atWork;
        for (int i = 0; i < 8; ++i) {
            atWork.push_back(m_players.player(clip.file()));
        }
        QVERIFY(waitUntil([&] { return OpenFiles::countOf(clip.file()) == 8; }));

        for (int i = 0; i < 20; ++i) {
            m_players.player(clip.file()).reset();
        }

        QVERIFY(waitUntil([&] { return m_players.clipCount() == 8; }));
        atWork.clear();
        QVERIFY(waitUntil([&] { return m_players.clipCount() == 0; }));
    }

    void clipsThatCannotEndDoNotGatherThreads()
    {
        const auto clip = CodedClips::all().at(8);
        // As on a card that hangs: what is lent out and not given back keeps a clip from its end.
        std::vector<std::unique_ptr<OpenGlFrames>> lent;
        for (int i = 0; i < 8; ++i) {
            const auto player = m_players.player(clip.file());
            const auto frames = player->frames();
            frames->showWithOpenGl([] {});
            QVERIFY(waitUntil([&] {
                auto drawing =
                    frames->openGl([](void *, const char *) -> void * { return nullptr; }, nullptr);
                if (drawing) {
                    lent.push_back(std::move(drawing));
                }
                return lent.size() == size_t(i) + 1;
            }));
        } // each player has gone, before what it waits for
        QCOMPARE(m_players.clipCount(), 8);
        QVERIFY(waitUntil([&] { return OpenFiles::countOf(clip.file()) == 0; }));
        const int threads = OpenFiles::threads();

        for (int i = 0; i < 100; ++i) {
            const auto player = m_players.player(clip.file());
            player->frames()->showImages({120, 64}, [] {});
            player->play();
            QTest::qWait(1);
        }

        QVERIFY(waitUntil([&] { return m_players.clipCount() == 8; }));
        QVERIFY(OpenFiles::threads() <= threads);
        lent.clear();
        QVERIFY(waitUntil([&] { return m_players.clipCount() == 0; }));
    }

    void aFileNameMayBeAnyBytes()
    {
        const QTemporaryDir folder;
        const auto clip = CodedClips::all().at(8);
        const auto file = std::filesystem::path(folder.path().toStdString()) / "a\xff%20\n b.MOV";
        std::filesystem::copy_file(clip.file(), file);

        Watched watched(m_players, file);

        QVERIFY(waitUntil([&] { return watched.shown(clip) == 0; }));
        std::filesystem::remove(file);
    }

    void realClipsPlayOrStayBlackWithoutHarm()
    {
        const auto media = qEnvironmentVariable("KESTLE_SHARED_MEDIA");
        if (!QDir(media).exists()) {
            QSKIP("the folder of real camera files is missing");
        }
        int played = 0;
        for (const auto *folder : {"/video", "/corrupt"}) {
            for (const auto &entry :
                 QDir(media + QLatin1String(folder)).entryInfoList(QDir::Files)) {
                Watched watched(m_players, entry.filePath().toStdString());
                watched.player.play();
                const auto isDecided = [&] {
                    return watched.player.hasFailed() || !watched.frames->image().isNull() ||
                           watched.player.currentTime() > Seconds(0.05) ||
                           watched.player.rate() == 0;
                };
                (void)waitUntil(isDecided, 700ms); // some never are
                played += watched.frames->image().isNull() ? 0 : 1;
                watched.player.seek(Seconds(0.3));
                QTest::qWait(20);
            }
        }
        qInfo("%d show pictures", played);
        QVERIFY(played > 10);
        QVERIFY(waitUntil([this] { return m_players.clipCount() == 0; }));
    }

private:
    VideoPlayers m_players{{.hardwareDecoding = false, .sound = false}};
};

QTEST_MAIN(MpvPlayerTest)
#include "MpvPlayerTest.moc"
