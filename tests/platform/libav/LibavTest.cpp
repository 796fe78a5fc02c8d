// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/libav/Libav.h"
#include "platform/hevc/HevcPicture.h"
#include "platform/hevc/LibavLimits.h"
#include "platform/media/PosterFrame.h"
#include "tests/support/HeifPictures.h"
#include "tests/support/HevcEncoder.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <thread>
#include <vector>

extern "C" {
#include <libavutil/mem.h>
}

using namespace Qt::StringLiterals;

/// Runs twice: where the module is, and where there is none.
class LibavTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsLoadedBeforeItIsNeeded() { QVERIFY(!isLoaded()); }

    void severalThreadsMayNeedItFirst()
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([] { loadLibav(); });
        }
        threads.clear();

        QCOMPARE(loadLibav(), KESTLE_MODULE_IS_THERE);
        QCOMPARE(isLoaded(), KESTLE_MODULE_IS_THERE);
    }

    void aClipHasAPictureWhereTheModuleIs()
    {
        const auto clip = m_folder.filePath(u"clip.mp4"_s);
        QProcess ffmpeg;
        ffmpeg.start(u"ffmpeg"_s, {u"-f"_s, u"lavfi"_s, u"-i"_s, u"color=red:s=64x36:d=0.5:r=10"_s,
                                   u"-c:v"_s, u"mpeg4"_s, clip});
        if (!ffmpeg.waitForStarted()) {
            QSKIP("the ffmpeg command is missing");
        }
        QVERIFY(ffmpeg.waitForFinished());

        QCOMPARE(posterFrame(clip.toStdString()).isNull(), !KESTLE_MODULE_IS_THERE);
    }

    void noMoreMemoryIsHadAtOnceThanPicturesNeed()
    {
        limitLibav();
        auto *largest = av_malloc(192'000'000);
        auto *larger = av_malloc(300'000'000);

        QCOMPARE(largest != nullptr, KESTLE_MODULE_IS_THERE);
        QVERIFY(!larger);
        av_free(largest);
        av_free(larger);
    }

    void aPictureCodedAsHevcIsThereWhereTheModuleIs()
    {
        if (!HeifPictures::canEncode()) {
            QSKIP("libheif has no encoder");
        }
        const auto coded =
            HevcEncoder::encode(HeifPictures::plain(QSize(64, 64), HeifPictures::red));
        constexpr int boxHeader = 8;
        constexpr qint64 plenty = 1 << 28;

        const auto picture =
            HevcPicture::decode(coded.configuration.mid(boxHeader), coded.data, plenty, plenty);

        QCOMPARE(picture.has_value(), KESTLE_MODULE_IS_THERE);
    }

private:
    /// As the system has it. libheif, which the test encodes with, has no need of libavformat.
    static bool isLoaded()
    {
        QFile maps(u"/proc/self/maps"_s);
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("/libavformat.so");
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(LibavTest)
#include "LibavTest.moc"
