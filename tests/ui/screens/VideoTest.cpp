// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MpvPlayer.h"
#include "platform/media/VideoFrames.h"
#include "platform/media/VideoPlayers.h"
#include "tests/app/FakePlayer.h"
#include "tests/support/CodedClips.h"
#include "tests/support/OpenFiles.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/WindowBench.h"

#include <QAccessible>

#include <malloc.h>

using namespace Qt::StringLiterals;
using Seconds = VideoPlayer::Seconds;

namespace {

/// The main window and a pointer over it.
class PointerBench : public WindowBench {
public:
    /// Over the clip, to where it comes from elsewhere.
    void hover(QPoint at = {500, 300}) const
    {
        QTest::mouseMove(window, at - QPoint(5, 5));
        QTest::mouseMove(window, at);
    }

    /// Away from the clip.
    void leave() const { QTest::mouseMove(window, QPoint(500, window->height() - 10)); }
};

/// The main window with players that only tell what they are asked for.
class FakeBench : public PointerBench {
public:
    FakeBench()
    {
        makePlayer = [this](const std::filesystem::path &url) {
            return std::make_unique<FakePlayer>(log, url);
        };
    }

    ~FakeBench() { appState.dropVideoPlayer(); }

    FakePlayer::Log log;
};

/// The main window over a card with a real clip or two, which are copies of one coded clip.
class RealBench : public PointerBench {
public:
    RealBench(VideoPlayers &players, const CodedClip &clip)
        : m_clip(clip)
    {
        makePlayer = [&players](const std::filesystem::path &url) { return players.player(url); };
    }

    ~RealBench() { appState.dropVideoPlayer(); }

    void cullClips(const std::vector<std::string> &shots)
    {
        const auto root = mountLater("CARD", shots);
        for (const auto &shot : shots) {
            if (shot.ends_with(".MOV")) {
                std::filesystem::copy_file(m_clip.file(), root / "DCIM/100_FUJI" / shot,
                                           std::filesystem::copy_options::overwrite_existing);
            }
        }
        appState.start();
        volumes.mount(root, u"UUID-CARD"_s, u"CARD"_s);
        cardRoot = root;
        QTRY_COMPARE(appState.phase(), Phase::cardReady(false));
        appState.startCulling();
        QTRY_COMPARE(appState.phase(), Phase::culling());
    }

    void enlargeARejectedClip()
    {
        cullClips({"DSCF0001.MOV", "DSCF0002.JPG"});
        QVERIFY(waitUntil([this] { return shown() >= 0; }));
        key(Qt::Key_X);
        appState.goToReview();
        key(Qt::Key_Space);
        QVERIFY(waitUntil([this] { return shown() >= 0; }));
    }

    [[nodiscard]] std::filesystem::path file(const std::string &shot) const
    {
        return cardRoot / "DCIM/100_FUJI" / shot;
    }

    [[nodiscard]] int shown() const
    {
        const auto *item = find(u"video"_s);
        if (!item) {
            return -1;
        }
        const QImage grab = window->grabWindow();
        const QRectF place = rectOf(item);
        const qreal ratio = window->effectiveDevicePixelRatio();
        return m_clip.frameIn(
            grab.copy(QRectF(place.topLeft() * ratio, place.size() * ratio).toRect()));
    }

    /// Paused where the frame is that the player has come to.
    void pauseAt(double seconds)
    {
        appState.videoPlayer()->pause();
        appState.videoPlayer()->seek(Seconds(seconds));
        QVERIFY(waitUntil([&] { return shown() == m_clip.frameAt(seconds); }));
    }

private:
    CodedClip m_clip;
};

} // namespace

/// Clips in the cull screen and in the enlarged reject.
class VideoTest : public QObject {
    Q_OBJECT

    using Road = std::function<void(RealBench &)>;

private Q_SLOTS:
    void hoveringAddsOneObserverAndLeavesNone()
    {
        FakeBench bench;
        bench.cull({"DSCF0001.MOV", "DSCF0002.JPG"});
        QTRY_VERIFY(bench.appState.videoPlayer());
        bench.leave();
        QTRY_COMPARE(bench.appState.videoPlayer()->observerCount(), 0);
        QVERIFY(!bench.find(u"timeline"_s));

        for (int time = 0; time < 20; ++time) {
            bench.hover();
            QTRY_VERIFY(bench.find(u"timeline"_s));
            QCOMPARE(bench.appState.videoPlayer()->observerCount(), 1);
            bench.hover({600, 200}); // still over it
            QCOMPARE(bench.appState.videoPlayer()->observerCount(), 1);
            bench.leave();
            QTRY_VERIFY(!bench.find(u"timeline"_s));
            QCOMPARE(bench.appState.videoPlayer()->observerCount(), 0);
        }
        QVERIFY(bench.warnings.isEmpty());
    }

    void theTimelineLiesOverTheLowerPartOfTheClip()
    {
        FakeBench bench;
        bench.log.duration = Seconds(4);
        bench.cull({"DSCF0001.MOV"});
        QTRY_VERIFY(bench.find(u"video"_s));
        bench.hover();
        QTRY_VERIFY(bench.find(u"timeline"_s));

        const auto area = WindowBench::rectOf(bench.find(u"player"_s));
        const auto place = WindowBench::rectOf(bench.find(u"timeline"_s));
        QCOMPARE(place.left(), area.left() + 24);
        QCOMPARE(place.right(), area.right() - 24);
        QCOMPARE(place.bottom(), area.bottom() - 70);

        // It stays while the pointer is over the timeline itself.
        bench.hover(place.center().toPoint());
        QTest::qWait(50);
        QVERIFY(bench.find(u"timeline"_s));
        const QImage grab = bench.window->grabWindow();
        const QPoint handle(int(place.left()) + 7, int(place.center().y()));
        QCOMPARE(grab.pixelColor(handle * grab.devicePixelRatio()), QColor(Qt::white));
    }

    void untilTheDurationIsKnownTheSliderHasOneSecond()
    {
        FakeBench bench;
        bench.cull({"DSCF0001.MOV"});
        QTRY_VERIFY(bench.find(u"video"_s));
        bench.hover();
        QTRY_VERIFY(bench.find(u"timelineSlider"_s));
        const auto *slider = bench.find(u"timelineSlider"_s);
        QCOMPARE(slider->property("from").toDouble(), 0.0);
        QCOMPARE(slider->property("to").toDouble(), 1.0);

        bench.log.duration = Seconds(7);

        QTRY_COMPARE(slider->property("to").toDouble(), 7.0);
    }

    void aVeryShortClipHasATenthOfASecond()
    {
        FakeBench bench;
        bench.cull({"DSCF0001.MOV"});
        bench.log.duration = Seconds(0.04);
        QTRY_VERIFY(bench.find(u"video"_s));
        bench.hover();
        QTRY_VERIFY(bench.find(u"timelineSlider"_s));

        QTRY_COMPARE(bench.find(u"timelineSlider"_s)->property("to").toDouble(), 0.1);
    }

    void anotherClipPausesTheFirstAndBeginsAtItsBeginning()
    {
        FakeBench bench;
        bench.cull({"DSCF0001.MOV", "DSCF0002.MOV"});
        QTRY_COMPARE(bench.log.made, 1);
        QCOMPARE(bench.log.rate, 1.0);
        QList<double> ratesAtTheEnd;
        connect(bench.appState.videoPlayer(), &QObject::destroyed, this,
                [&] { ratesAtTheEnd.append(bench.log.rate); });

        bench.key(Qt::Key_Right);

        QTRY_COMPARE(bench.log.made, 2);
        QCOMPARE(ratesAtTheEnd, QList<double>{0});
        QCOMPARE(bench.log.alive, 1);
        QCOMPARE(bench.log.url.filename(), std::filesystem::path("DSCF0002.MOV"));
        QCOMPARE(bench.log.rate, 1.0);
        QCOMPARE(bench.log.time, Seconds(0));
    }

    void aPhotoHasNoPlayerAndWithoutOneNothingIsShown()
    {
        FakeBench bench;
        bench.cull({"DSCF0001.JPG", "DSCF0002.MOV"});
        QTest::qWait(50);
        QCOMPARE(bench.log.made, 0);
        QVERIFY(!bench.find(u"player"_s));

        bench.key(Qt::Key_Right);
        QTRY_COMPARE(bench.log.made, 1);
        bench.hover();
        QTRY_VERIFY(bench.find(u"timeline"_s));
        bench.appState.dropVideoPlayer();

        QTRY_VERIFY(!bench.find(u"timeline"_s));
        QCOMPARE(bench.log.alive, 0);
        QVERIFY(bench.warnings.isEmpty());
    }

    void aRescuedClipDoesNotLetTheNextOnePlay()
    {
        FakeBench bench;
        bench.cull({"DSCF0001.MOV", "DSCF0002.MOV", "DSCF0003.JPG"});
        QTRY_COMPARE(bench.log.made, 1);
        bench.key(Qt::Key_X);
        bench.key(Qt::Key_X);
        bench.key(Qt::Key_X);
        bench.appState.goToReview();
        bench.key(Qt::Key_Space);
        QTRY_VERIFY(bench.find(u"enlargedPlayer"_s));
        QTRY_VERIFY(bench.appState.videoPlayer());
        const int made = bench.log.made;

        bench.key(Qt::Key_X);

        QTRY_VERIFY(!bench.find(u"enlargedPlayer"_s));
        QTest::qWait(50);
        QCOMPARE(bench.log.made, made);
        QVERIFY(!bench.appState.videoPlayer());
        QCOMPARE(bench.log.alive, 0);
    }

    void theClipAndItsTimelineHaveNames()
    {
        FakeBench bench;
        bench.cull({"DSCF0001.MOV"});
        QTRY_VERIFY(bench.find(u"video"_s));
        bench.hover();
        QTRY_VERIFY(bench.find(u"timelineSlider"_s));
        const auto accessible = [&](const QString &name) {
            return QAccessible::queryAccessibleInterface(bench.find(name));
        };

        QCOMPARE(accessible(u"video"_s)->role(), QAccessible::Animation);
        QCOMPARE(accessible(u"video"_s)->text(QAccessible::Name), u"Clip"_s);
        QCOMPARE(accessible(u"timelineSlider"_s)->role(), QAccessible::Slider);
        QCOMPARE(accessible(u"timelineSlider"_s)->text(QAccessible::Name),
                 u"Position in the clip"_s);
    }

    void draggingTheSliderShowsExactFrames()
    {
        RealBench bench(m_players, m_clip);
        bench.cullClips({"DSCF0001.MOV"});
        QVERIFY(waitUntil([&] { return bench.shown() >= 0; })); // plays at once
        bench.pauseAt(0);
        bench.hover();
        QTRY_VERIFY(bench.find(u"timelineSlider"_s));
        auto *slider = bench.find(u"timelineSlider"_s);
        QTRY_VERIFY(slider->property("to").toDouble() > 5);
        const auto place = WindowBench::rectOf(slider);
        const int row = int(place.center().y());

        QTest::mousePress(bench.window, Qt::LeftButton, {}, QPoint(int(place.left()) + 7, row));
        for (const int percent : {10, 35, 20, 80, 60, 99}) {
            const QPoint to(int(place.left() + place.width() * percent / 100), row);
            QTest::mouseMove(bench.window, to);
            const double wanted = slider->property("value").toDouble();
            QVERIFY(std::abs(wanted / slider->property("to").toDouble() - percent / 100.0) < 0.02);
            QVERIFY(waitUntil([&] { return bench.shown() == m_clip.frameAt(wanted); }));
            QCOMPARE(bench.appState.videoPlayer()->currentTime().count(), wanted);
        }
        QTest::mouseRelease(bench.window, Qt::LeftButton, {}, QPoint(int(place.right()) - 9, row));
        QCOMPARE(bench.appState.videoPlayer()->rate(), 0.0);
        QVERIFY(!slider->hasActiveFocus());
    }

    void scrubbingLeavesItPlaying()
    {
        RealBench bench(m_players, m_clip);
        bench.cullClips({"DSCF0001.MOV"});
        QVERIFY(waitUntil([&] { return bench.shown() >= 0; }));
        bench.hover();
        QTRY_VERIFY(bench.find(u"timelineSlider"_s));
        const auto place = WindowBench::rectOf(bench.find(u"timelineSlider"_s));
        QTRY_VERIFY(bench.appState.videoPlayer()->duration());

        QTest::mouseClick(bench.window, Qt::LeftButton, {}, place.center().toPoint());

        const auto from = bench.appState.videoPlayer()->currentTime();
        QVERIFY(from > Seconds(3));
        QCOMPARE(bench.appState.videoPlayer()->rate(), 1.0);
        QVERIFY(waitUntil(
            [&] { return bench.appState.videoPlayer()->currentTime() > from + Seconds(0.2); }));
    }

    void keysPauseAndStepByTwoSeconds()
    {
        RealBench bench(m_players, m_clip);
        bench.cullClips({"DSCF0001.MOV"});
        QVERIFY(waitUntil([&] { return bench.shown() > 5; }));
        bench.key(Qt::Key_Space);
        QCOMPARE(bench.appState.videoPlayer()->rate(), 0.0);
        bench.pauseAt(3);

        const auto landsAt = [&](Qt::Key key, double seconds) {
            bench.key(key);
            QCOMPARE(bench.appState.videoPlayer()->currentTime().count(), seconds);
            QVERIFY(waitUntil([&] { return bench.shown() == m_clip.frameAt(seconds); }));
        };
        const double end = bench.appState.videoPlayer()->duration()->count();
        landsAt(Qt::Key_L, 5);
        landsAt(Qt::Key_L, 7);
        landsAt(Qt::Key_J, 5);
        landsAt(Qt::Key_J, 3);
        landsAt(Qt::Key_J, 1);
        landsAt(Qt::Key_J, 0);
        for (double to = 2; to < end; to += 2) {
            landsAt(Qt::Key_L, to);
        }
        landsAt(Qt::Key_L, end);
        landsAt(Qt::Key_J, end - 2);

        bench.key(Qt::Key_L);
        bench.key(Qt::Key_K); // at the end: from the beginning
        QCOMPARE(bench.appState.videoPlayer()->rate(), 1.0);
        QVERIFY(waitUntil([&] { return bench.shown() < 30; }));
    }

    void leavingTheClipLetsGoOfItsFile_data()
    {
        QTest::addColumn<Road>("road");
        const auto row = [](const char *name, const Road &road) { QTest::newRow(name) << road; };
        row("a step on", [](RealBench &bench) { bench.key(Qt::Key_Right); });
        row("a step back", [](RealBench &bench) { bench.key(Qt::Key_Left); });
        row("a click", [](RealBench &bench) {
            const auto *border = bench.find(u"border"_s); // of the current one
            QVERIFY(border);
            const auto current = WindowBench::rectOf(border);
            QTest::mouseClick(bench.window, Qt::LeftButton, {},
                              (current.center() + QPointF(current.width() + 4, 0)).toPoint());
            QCOMPARE(bench.appState.session()->currentIndex(), 2);
        });
        row("a reject that advances", [](RealBench &bench) { bench.key(Qt::Key_X); });
        row("an undo", [](RealBench &bench) { bench.appState.undoDecision(); });
        row("Escape", [](RealBench &bench) { bench.key(Qt::Key_Escape); });
        row("the review", [](RealBench &bench) { bench.key(Qt::Key_Return); });
        row("the step to the card", [](RealBench &bench) { bench.appState.backToCardScreen(); });
        row("the card goes", [](RealBench &bench) { bench.volumes.unmount(bench.cardRoot); });
    }

    void leavingTheClipLetsGoOfItsFile()
    {
        QFETCH(const Road, road);
        RealBench bench(m_players, m_clip);
        bench.cullClips({"DSCF0001.JPG", "DSCF0002.MOV", "DSCF0003.JPG"});
        bench.appState.session()->jump(0);
        bench.key(Qt::Key_X); // something to be undone, and the clip is next
        const auto file = bench.file("DSCF0002.MOV");
        QVERIFY(waitUntil([&] { return bench.shown() >= 0; }));
        QCOMPARE(OpenFiles::countOf(file), 1);

        road(bench);

        QTRY_VERIFY(!bench.appState.videoPlayer());
        QVERIFY(waitUntil([&] { return OpenFiles::countOf(file) == 0; }));
        QVERIFY(waitUntil([this] { return m_players.clipCount() == 0; }));
        QVERIFY(bench.warnings.isEmpty());
    }

    void theEnlargedClipPlaysAndIsLetGo()
    {
        RealBench bench(m_players, m_clip);
        bench.enlargeARejectedClip();
        bench.key(Qt::Key_K);
        QCOMPARE(bench.appState.videoPlayer()->rate(), 0.0);
        bench.hover();
        QTRY_VERIFY(bench.find(u"timeline"_s));
        bench.key(Qt::Key_Escape);

        QVERIFY(!bench.appState.videoPlayer());
        QVERIFY(waitUntil([this] { return m_players.clipCount() == 0; }));
    }

    void aDeletionLetsGoOfTheEnlargedClip()
    {
        RealBench bench(m_players, m_clip);
        bench.enlargeARejectedClip();
        const auto file = bench.file("DSCF0001.MOV");
        QVERIFY(waitUntil(
            [&] { return OpenFiles::countOf(file) == 1; })); // the first player has let go

        bench.appState.performDelete();

        QVERIFY(!bench.appState.videoPlayer());
        QVERIFY(waitUntil([&] { return m_players.clipCount() == 0; }));
        QCOMPARE(OpenFiles::countOf(file), 0);
        QTRY_COMPARE(bench.appState.phase().kind, Phase::Kind::Summary);
        QVERIFY(!std::filesystem::exists(file));
    }

    void aThousandQuickStepsLeaveNothingBehind()
    {
        RealBench bench(m_players, m_clip);
        bench.cullClips({"DSCF0001.MOV", "DSCF0002.JPG", "DSCF0003.MOV"});
        const auto step = [&](int times) {
            for (int i = 0; i < times; ++i) {
                bench.key(i % 2 == 0 ? Qt::Key_Right : Qt::Key_Left);
                QTest::qWait(i % 10 == 0 ? 30 : 1); // some get as far as their pictures
            }
            bench.appState.dropVideoPlayer();
            QVERIFY(
                waitUntil([this] { return m_players.clipCount() == 0; }, std::chrono::seconds(30)));
        };
        step(100); // what is made once for all
        const int descriptors = OpenFiles::descriptors();
        const int threads = OpenFiles::threads();
        const auto memory = ::mallinfo2().uordblks;

        step(1000);

        QVERIFY2(OpenFiles::descriptors() <= descriptors + 2,
                 qPrintable(QString::number(OpenFiles::descriptors() - descriptors)));
        QVERIFY2(OpenFiles::threads() <= threads + 2,
                 qPrintable(QString::number(OpenFiles::threads() - threads)));
        const auto grown = double(::mallinfo2().uordblks) - double(memory);
        QVERIFY2(grown < 4e6, qPrintable(QString::number(grown)));
    }

    void initTestCase()
    {
        if (!CodedClip::canBeMade()) {
            QSKIP("the ffmpeg command is missing");
        }
    }

private:
    VideoPlayers m_players{{.hardwareDecoding = false, .sound = false}};
    const CodedClip m_clip = CodedClip::h264(u"screen.mov"_s, 300).at(30000, 1001);
};

QTEST_MAIN(VideoTest)
#include "VideoTest.moc"
