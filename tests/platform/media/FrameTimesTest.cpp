// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/FrameTimes.h"
#include "platform/media/MovieBoxes.h"
#include "platform/media/SampleTable.h"
#include "tests/support/ClipBytes.h"
#include "tests/support/CodedClip.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

std::optional<SampleTable::Frames> framesIn(const std::filesystem::path &path)
{
    const auto file = InputFile::open(path);
    MovieBoxes movie(*file);
    return SampleTable::frames(movie);
}

} // namespace

/// Which frame contains a time, as far as the container tells.
class FrameTimesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aTimeLeadsHalfwayBeforeTheFrameThatContainsIt_data()
    {
        QTest::addColumn<double>("time");
        QTest::addColumn<double>("ahead");
        QTest::addColumn<double>("next");
        constexpr double never = std::numeric_limits<double>::infinity();
        QTest::newRow("the beginning") << 0.0 << 0.0 << 1.0;
        QTest::newRow("within the first frame") << 0.9 << 0.0 << 1.0;
        QTest::newRow("where the second begins") << 1.0 << 0.5 << 3.0;
        QTest::newRow("a rounding before that") << 1.0 - 1e-9 << 0.5 << 3.0;
        QTest::newRow("within the second") << 2.9 << 0.5 << 3.0;
        QTest::newRow("where the third begins") << 3.0 << 2.0 << never;
        QTest::newRow("within the last") << 3.5 << 2.0 << never;
        QTest::newRow("behind the end") << 1e9 << 2.0 << never;
        QTest::newRow("before the beginning") << -1.0 << 0.0 << 0.0;
    }

    void aTimeLeadsHalfwayBeforeTheFrameThatContainsIt()
    {
        QFETCH(const double, time);
        QFETCH(const double, ahead);
        QFETCH(const double, next);
        const FrameTimes times({13, 10, 11, 11}); // as if the clip began at 10

        QCOMPARE(times.aheadOfFrameAt(time), ahead);
        QCOMPARE(times.nextFrameAfter(time), next);
    }

    void withoutAListFramesAreRegular()
    {
        const auto times = FrameTimes::regular(25);

        QCOMPARE(times.aheadOfFrameAt(0.039), 0.0);
        QCOMPARE(times.aheadOfFrameAt(0.04), 0.02);
        QCOMPARE(times.aheadOfFrameAt(1.01), 0.98);
        QCOMPARE(times.nextFrameAfter(1.01), 1.04);
    }

    void whereNothingIsKnownATimeIsItself()
    {
        QVERIFY(!FrameTimes().isKnown());
        QVERIFY(!FrameTimes::regular(0).isKnown());
        QVERIFY(!FrameTimes::regular(std::nan("")).isKnown());
        QCOMPARE(FrameTimes().aheadOfFrameAt(1.25), 1.25);
    }

    void tablesTellWhenFramesAreShown_data()
    {
        QTest::addColumn<CodedClip>("clip");
        QTest::newRow("MP4, some shown before others that are coded first")
            << CodedClip::h264(u"short.mp4"_s, 30).at(30000, 1001);
        QTest::newRow("MOV, HEVC") << CodedClip::hevc(u"short.mov"_s, 30).at(60000, 1001);
        QTest::newRow("irregular") << CodedClip::h264(u"irregular.mp4"_s, 30).irregular();
        auto withSound = CodedClip::h264(u"sound.mov"_s, 30).at(25, 1);
        withSound.hasSound = true;
        QTest::newRow("with sound") << withSound;
    }

    void tablesTellWhenFramesAreShown()
    {
        QFETCH(const CodedClip, clip);
        if (!CodedClip::canBeMade()) {
            QSKIP("the ffmpeg command is missing");
        }

        auto frames = framesIn(clip.file());

        QVERIFY(frames);
        QVERIFY(!frames->end);
        auto &times = frames->times;
        QCOMPARE(times.size(), clip.times.size());
        std::ranges::sort(times);
        for (size_t number = 0; number < times.size(); ++number) {
            QVERIFY2(std::abs(times[number] - times.front() - clip.times[number]) < 1e-4,
                     qPrintable(u"%1 of frame %2"_s.arg(times[number]).arg(number)));
        }
    }

    void framesThatAreCutOffAreNotCounted()
    {
        if (!CodedClip::canBeMade()) {
            QSKIP("the ffmpeg command is missing");
        }
        auto clip = CodedClip::h264(u"index-first.mp4"_s, 30).at(25, 1);
        clip.coding += {u"-bf"_s, u"0"_s, u"-movflags"_s, u"faststart"_s};
        const ClipBytes bytes(clip.file());
        const QTemporaryDir folder;
        const auto cut = std::filesystem::path(folder.path().toStdString()) / "cut.mp4";
        size_t before = 30;
        for (auto length = bytes.size(); length > 0; length -= 20) {
            bytes.writeFirst(length, cut);

            const auto frames = framesIn(cut);

            if (!frames) {
                break; // nothing but tables is left, or not even those
            }
            const auto count = frames->times.size();
            QVERIFY(count <= before);
            QCOMPARE(frames->end.has_value(), length < bytes.size());
            if (frames->end) {
                QVERIFY(std::abs(*frames->end - frames->times.front() - double(count) / 25) < 1e-4);
            }
            before = count;
        }
        QVERIFY(before < 29);
    }

    void cutAndForeignFilesHaveNone()
    {
        if (!CodedClip::canBeMade()) {
            QSKIP("the ffmpeg command is missing");
        }
        const auto whole = CodedClip::h264(u"short.mp4"_s, 30).at(30000, 1001).file();
        QTemporaryDir folder;
        const auto cut = std::filesystem::path(folder.path().toStdString()) / "cut.mp4";
        const auto size = std::filesystem::file_size(whole);
        for (auto length = size; length > 0; length -= std::min<uintmax_t>(length, 37)) {
            std::filesystem::copy_file(whole, cut,
                                       std::filesystem::copy_options::overwrite_existing);
            std::filesystem::resize_file(cut, length);

            const auto frames = framesIn(cut);

            QVERIFY(!frames || frames->times.size() <= 30);
        }
        const auto other = CodedClip::h264(u"short.mts"_s, 30).at(25, 1).file();
        QVERIFY(!framesIn(other));
    }
};

QTEST_GUILESS_MAIN(FrameTimesTest)
#include "FrameTimesTest.moc"
