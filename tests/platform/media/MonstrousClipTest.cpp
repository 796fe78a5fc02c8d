// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MovieBoxes.h"
#include "platform/media/MpvPlayer.h"
#include "platform/media/PosterFrame.h"
#include "platform/media/SampleCount.h"
#include "platform/media/VideoFrames.h"
#include "platform/media/VideoPlayers.h"
#include "tests/support/ClipBytes.h"
#include "tests/support/CodedClip.h"
#include "tests/support/PeakMemory.h"
#include "tests/support/WaitUntil.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// Small files that claim to have very many samples.
class MonstrousClipTest : public QObject {
    Q_OBJECT

    using Change = std::function<void(ClipBytes &)>;

private Q_SLOTS:
    void initTestCase()
    {
        if (!CodedClip::canBeMade()) {
            QSKIP("the ffmpeg command is missing");
        }
    }

    void itIsRefusedWithLittleMemory_data()
    {
        QTest::addColumn<QStringList>("making");
        QTest::addColumn<Change>("change");
        constexpr quint32 many = 85'000'000;
        const Change sizes = [](ClipBytes &clip) {
            clip.set("stsz", 4, 1); // each of one byte
            clip.set("stsz", 8, many);
            clip.set("stts", 8, many);
            clip.set("stsc", 12, many);
        };
        QTest::newRow("one size for all") << QStringList() << sizes;
        QTest::newRow("where only libavformat looks")
            << QStringList() << Change([=](ClipBytes &clip) {
                   sizes(clip);
                   clip.wrap("moov", "udta");
               });
        QTest::newRow("fragments of which nothing is told")
            << QStringList{u"-movflags"_s, u"frag_keyframe+empty_moov+default_base_moof"_s}
            << Change([](ClipBytes &clip) {
                   clip.set("trun", 0, 0);
                   clip.set("trun", 4, many);
               });
        QTest::newRow("shown again and again")
            << QStringList{u"-use_editlist"_s, u"1"_s} << Change([](ClipBytes &clip) {
                   clip.set("stsz", 4, 1);
                   clip.set("stsz", 8, 3'900'000);
                   clip.set("stts", 8, 3'900'000);
                   clip.set("stsc", 12, 3'900'000);
                   clip.repeatStretch(1000);
               });
    }

    void itIsRefusedWithLittleMemory()
    {
        QFETCH(const QStringList, making);
        QFETCH(const Change, change);
        const QTemporaryDir folder;
        const auto path = std::filesystem::path(folder.path().toStdString()) / "clip.mp4";
        remake(path, making);
        QVERIFY(!posterFrame(path).isNull()); // which has loaded what it needs
        ClipBytes clip(path);
        change(clip);
        clip.write(path);
        QVERIFY(std::filesystem::file_size(path) > 1000);
        const PeakMemory peak;

        QVERIFY(posterFrame(path).isNull());
        const auto player = m_players.player(path);
        player->frames()->showImages({120, 64}, [] {});
        player->play();
        QVERIFY(waitUntil([&] { return static_cast<MpvPlayer &>(*player).hasFailed(); }));

        QVERIFY2(peak.bytes() < 150'000'000, qPrintable(QString::number(peak.bytes())));
    }

    void hoursOfPlainSoundAreNot()
    {
        const QTemporaryDir folder;
        const auto path = std::filesystem::path(folder.path().toStdString()) / "clip.mov";
        const auto coded = QString::fromStdString(m_clip.file().string());
        QCOMPARE(QProcess::execute(u"ffmpeg"_s,
                                   {u"-v"_s, u"error"_s, u"-i"_s, coded, u"-f"_s, u"lavfi"_s,
                                    u"-i"_s, u"anullsrc=r=192000:d=60"_s, u"-map"_s, u"0"_s,
                                    u"-map"_s, u"1"_s, u"-c:v"_s, u"copy"_s, u"-c:a"_s,
                                    u"pcm_s16le"_s, QString::fromStdString(path.string())}),
                 0); // eleven million samples
        const auto file = InputFile::open(path);
        MovieBoxes movie(*file);
        QCOMPARE(movie.tracks().size(), size_t(2));

        QVERIFY(!SampleCount::isMonstrous(movie));
        QVERIFY(!posterFrame(path).isNull());
    }

    void realClipsAreNot()
    {
        const auto media = qEnvironmentVariable("KESTLE_SHARED_MEDIA");
        if (!QDir(media).exists()) {
            QSKIP("the folder of real camera files is missing");
        }
        for (const auto &entry : QDir(media + u"/video"_s).entryInfoList(QDir::Files)) {
            const auto file = InputFile::open(entry.filePath().toStdString());
            MovieBoxes movie(*file);
            QVERIFY2(!SampleCount::isMonstrous(movie), qPrintable(entry.fileName()));
        }
    }

private:
    void remake(const std::filesystem::path &path, const QStringList &options) const
    {
        QCOMPARE(QProcess::execute(
                     u"ffmpeg"_s, QStringList{u"-v"_s, u"error"_s, u"-i"_s,
                                              QString::fromStdString(m_clip.file().string()),
                                              u"-c"_s, u"copy"_s} +
                                      options + QStringList{QString::fromStdString(path.string())}),
                 0);
    }

    VideoPlayers m_players{{.hardwareDecoding = false, .sound = false}};
    const CodedClip m_clip = CodedClip::h264(u"modest.mp4"_s, 25).at(25, 1);
};

QTEST_MAIN(MonstrousClipTest)
#include "MonstrousClipTest.moc"
