// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/VideoSurface.h"

#include "platform/media/MpvPlayer.h"
#include "platform/media/PosterFrame.h"
#include "platform/media/VideoFrames.h"
#include "platform/media/VideoPlayers.h"
#include "tests/support/ClipBytes.h"
#include "tests/support/CodedClips.h"
#include "tests/support/WaitUntil.h"
#include "ui/items/DrawingsKeeper.h"

#include <QQuickWindow>
#include <QRandomGenerator>
#include <QSGRendererInterface>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using Seconds = VideoPlayer::Seconds;

namespace {

/// A window with a surface in it, somewhat aside.
class SurfaceBench {
public:
    explicit SurfaceBench(QRectF place)
    {
        window.setColor(Qt::blue);
        window.resize(300, 260);
        surface.setParentItem(window.contentItem());
        surface.setPosition(place.topLeft());
        surface.setSize(place.size());
        window.show();
        if (!QTest::qWaitForWindowExposed(&window)) {
            qFatal("the window does not appear");
        }
    }

    ~SurfaceBench() { surface.setPlayer(nullptr); }

    /// What is seen of the surface.
    [[nodiscard]] QImage seen()
    {
        const QImage grab = window.grabWindow();
        const QPointF corner = surface.mapToScene(surface.onWholePixel({})) * surface.pixelRatio();
        return grab.copy(QRect(corner.toPoint(), surface.pixelSize()))
            .convertToFormat(QImage::Format_RGB32);
    }

    [[nodiscard]] bool isOpenGl() const
    {
        return window.rendererInterface()->graphicsApi() == QSGRendererInterface::OpenGL;
    }

    QQuickWindow window;
    VideoSurface surface;
};

/// Whether two pictures of one shape have the same bright and dark places.
bool areAlike(const QImage &one, const QImage &other)
{
    constexpr QSize few(20, 20);
    const auto small = [&](const QImage &image) {
        return image.scaled(few, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage first = small(one);
    const QImage second = small(other);
    int largest = 0;
    for (int y = 0; y < few.height(); ++y) {
        for (int x = 0; x < few.width(); ++x) {
            largest =
                std::max(largest, std::abs(qGray(first.pixel(x, y)) - qGray(second.pixel(x, y))));
        }
    }
    return largest < 100;
}

} // namespace

Q_DECLARE_METATYPE(CodedClip)

/// What is seen of a clip in a window, drawn by the processor or with OpenGL.
class VideoSurfaceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!CodedClip::canBeMade()) {
            QSKIP("the ffmpeg command is missing");
        }
    }

    void everySeekIsSeenExactly_data()
    {
        QTest::addColumn<CodedClip>("clip");
        for (const auto &clip : CodedClips::all()) {
            QTest::newRow(qPrintable(clip.name)) << clip;
        }
    }

    void everySeekIsSeenExactly()
    {
        QFETCH(const CodedClip, clip);
        SurfaceBench bench({10, 10, 120, 100});
        const auto owner = m_players.player(clip.file());
        auto &player = static_cast<MpvPlayer &>(*owner);
        bench.surface.setPlayer(&player);
        QVERIFY(waitUntil([&] { return clip.frameIn(bench.seen()) == 0; }));
        QRandomGenerator dice(2);

        for (int i = 0; i < 200; ++i) {
            const double to = dice.bounded(clip.end());
            player.seek(Seconds(to));
            QVERIFY(waitUntil([&] { return !player.isSeeking(); }));
            int frame = -1;
            (void)waitUntil([&] {
                frame = clip.frameIn(bench.seen());
                return frame == clip.frameAt(to);
            });
            QCOMPARE(frame, clip.frameAt(to));
        }
        bench.surface.setPlayer(nullptr);
    }

    void aClipLiesAsItsPosterDoes_data()
    {
        using Corner = std::array<int, 4>;
        QTest::addColumn<Corner>("track");
        QTest::addColumn<Corner>("film");
        QTest::addColumn<bool>("isAcross");
        constexpr Corner none = {1, 0, 0, 1};
        QTest::newRow("as it is") << none << none << false;
        QTest::newRow("clockwise") << Corner{0, 1, -1, 0} << none << true;
        QTest::newRow("upside down") << Corner{-1, 0, 0, -1} << none << false;
        QTest::newRow("anticlockwise") << Corner{0, -1, 1, 0} << none << true;
        QTest::newRow("left is right") << Corner{-1, 0, 0, 1} << none << false;
        QTest::newRow("up is down") << Corner{1, 0, 0, -1} << none << false;
        QTest::newRow("along one diagonal") << Corner{0, 1, 1, 0} << none << true;
        QTest::newRow("along the other") << Corner{0, -1, -1, 0} << none << true;
        QTest::newRow("askew") << Corner{2, 1, -1, 2} << none << false;
        QTest::newRow("by the whole film") << none << Corner{0, 1, -1, 0} << true;
        QTest::newRow("by both") << Corner{-1, 0, 0, 1} << Corner{0, 1, -1, 0} << true;
    }

    void aClipLiesAsItsPosterDoes()
    {
        using Corner = std::array<int, 4>;
        QFETCH(const Corner, track);
        QFETCH(const Corner, film);
        QFETCH(const bool, isAcross);
        const QTemporaryDir folder;
        const auto path = std::filesystem::path(folder.path().toStdString()) / "clip.mov";
        ClipBytes clip(CodedClips::all().at(2).file());
        clip.setMatrix("tkhd", track);
        clip.setMatrix("mvhd", film);
        clip.write(path);
        const QImage poster = posterFrame(path);
        const QSize size = isAcross ? QSize(64, 120) : QSize(120, 64);
        QCOMPARE(poster.size(), size);

        SurfaceBench bench(QRectF(QPointF(10, 10), size)); // which it fills
        const auto player = m_players.player(path);
        bench.surface.setPlayer(player.get());

        QVERIFY(waitUntil([&] { return areAlike(bench.seen(), poster); }));
        for (const auto &other : {poster.mirrored(true, false), poster.mirrored(false, true),
                                  poster.mirrored(true, true)}) {
            QVERIFY(!areAlike(bench.seen(), other));
        }
        bench.surface.setPlayer(nullptr);
    }

    void scrubbingEndsOnTheNewestFrame()
    {
        const auto clip = CodedClips::all().at(1);
        SurfaceBench bench({10, 10, 120, 100});
        const auto player = m_players.player(clip.file());
        bench.surface.setPlayer(player.get());
        QVERIFY(waitUntil([&] { return clip.frameIn(bench.seen()) == 0; }));

        double to = 0;
        for (int i = 0; i < 60; ++i) { // in a second
            to = 0.5 + i * 0.05;
            player->seek(Seconds(to));
            QTest::qWait(16);
        }

        QVERIFY(waitUntil([&] { return clip.frameIn(bench.seen()) == clip.frameAt(to); }));
        QTest::qWait(100);
        QCOMPARE(clip.frameIn(bench.seen()), clip.frameAt(to));
        bench.surface.setPlayer(nullptr);
    }

    void thePictureIsWholeAndFittedWithBlackAround()
    {
        const auto clip = CodedClips::all().at(0); // 120 x 64, its lowest quarter black
        SurfaceBench bench({20, 20, 120, 200});
        const auto player = m_players.player(clip.file());
        bench.surface.setPlayer(player.get());

        QVERIFY(waitUntil([&] { return clip.frameIn(bench.seen()) == 0; }));

        const QImage seen = bench.seen();
        const int middle = seen.width() / 2;
        for (const int row : {0, seen.height() / 4, seen.height() * 3 / 4, seen.height() - 1}) {
            QVERIFY(qGray(seen.pixel(middle, row)) < 8);
            QCOMPARE(qAlpha(seen.pixel(middle, row)), 255);
        }
        // The mark in its corner begins where the bars of 60 points on either side end.
        const qreal ratio = bench.surface.pixelRatio();
        const int top = int((200 - 120 * 64 / 120.0) / 2 * ratio);
        QVERIFY(qGray(seen.pixel(2, top - 2)) < 40);
        QVERIFY(qGray(seen.pixel(2, top + 3)) > 200);
        const QImage grab = bench.window.grabWindow();
        QVERIFY(qBlue(grab.pixel(int(15 * ratio), int(100 * ratio))) > 200); // nothing beside it
        bench.surface.setPlayer(nullptr);
    }

    void aPixelOfThePictureLiesOnAPixelOfTheWindow()
    {
        const auto clip = CodedClips::all().at(8);
        SurfaceBench bench({10.3, 11.7, 120.9, 101.3});
        const auto player = m_players.player(clip.file());
        const auto copy = m_players.player(clip.file());
        bench.surface.setPlayer(player.get());
        copy->frames()->showImages(bench.surface.pixelSize(), [] {});
        QVERIFY(waitUntil(
            [&] { return clip.frameIn(bench.seen()) == 0 && !copy->frames()->image().isNull(); }));

        const QImage expected = copy->frames()->image();
        const QImage seen = bench.seen();

        QCOMPARE(seen.size(), expected.size());
        qint64 wrong = 0;
        const int tolerance = bench.isOpenGl() ? 40 : 0; // scaled by other means
        for (int y = 0; y < seen.height(); ++y) {
            for (int x = 0; x < seen.width(); ++x) {
                wrong +=
                    std::abs(qGray(seen.pixel(x, y)) - qGray(expected.pixel(x, y))) > tolerance;
            }
        }
        QVERIFY2(wrong <= (bench.isOpenGl() ? seen.width() * seen.height() / 50 : 0),
                 qPrintable(QString::number(wrong)));
        bench.surface.setPlayer(nullptr);
    }

    void itFollowsItsSizeAndItsPlayer()
    {
        const auto first = CodedClips::all().at(4);
        const auto second = CodedClips::all().at(5);
        SurfaceBench bench({10, 10, 120, 100});
        auto player = m_players.player(first.file());
        bench.surface.setPlayer(player.get());
        QVERIFY(waitUntil([&] { return first.frameIn(bench.seen()) == 0; }));

        bench.surface.setSize({210, 220}); // paused
        QVERIFY(waitUntil([&] {
            return bench.seen().size() == bench.surface.pixelSize() &&
                   first.frameIn(bench.seen()) == 0;
        }));

        player = m_players.player(second.file()); // the first is gone before anybody was told
        bench.surface.setPlayer(player.get());
        QVERIFY(waitUntil([&] { return second.frameIn(bench.seen()) == 0; }));

        bench.surface.setPlayer(nullptr);
        QVERIFY(waitUntil([&] {
            return qBlue(bench.seen().pixel(50, 50)) > 200; // the window behind it
        }));
    }

    void aSurfaceMayGoBeforeThePlayer()
    {
        const auto clip = CodedClips::all().at(0);
        const auto player = m_players.player(clip.file());
        {
            SurfaceBench bench({10, 10, 120, 100});
            bench.surface.setPlayer(player.get());
            QVERIFY(waitUntil([&] { return clip.frameIn(bench.seen()) == 0; }));
        }
        player->play();
        QTest::qWait(50);

        SurfaceBench bench({10, 10, 120, 100});
        bench.surface.setPlayer(player.get());

        QVERIFY(waitUntil([&] { return clip.frameIn(bench.seen()) >= 0; }));
        bench.surface.setPlayer(nullptr);
    }

    void whatDrewAClipThatWasLeftGoesByItself()
    {
        const auto clip = CodedClips::all().at(0);
        SurfaceBench bench({10, 10, 120, 100});
        auto player = m_players.player(clip.file());
        bench.surface.setPlayer(player.get());
        player->play();
        QVERIFY(waitUntil([&] { return clip.frameIn(bench.seen()) > 1; }));

        bench.surface.setPlayer(nullptr);
        player.reset();

        QVERIFY(waitUntil([this] { return m_players.clipCount() == 0; }));
        if (const auto *keeper = DrawingsKeeper::known(&bench.window)) { // with OpenGL
            QCOMPARE(keeper->count(), 0);
        }
    }

    void cleanupTestCase()
    {
        QVERIFY(waitUntil([this] { return m_players.clipCount() == 0; }));
    }

private:
    VideoPlayers m_players{{.hardwareDecoding = false, .sound = false}};
};

QTEST_MAIN(VideoSurfaceTest)
#include "VideoSurfaceTest.moc"
