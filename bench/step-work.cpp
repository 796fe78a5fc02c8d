// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// step-work CARD FIRST STEPS EDGE: holds Right in the real window over pictures that are always
// there, EDGE pixels wide, then rejects half of the card and works on in culling and review; prints
// what each takes. bench/step runs it.

#include "bench/BareWindow.h"
#include "bench/KeyWalk.h"
#include "bench/OneVolume.h"

#include <QGuiApplication>
#include <QStandardPaths>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

static constexpr int keysPerSecond = 30;

static constexpr QSize thumbnailSize(256, 171);

/// Another bitmap over the same pixels, which outlive it: whoever draws it takes it for a new one.
static QImage another(const QImage &image)
{
    return {image.constBits(), image.width(), image.height(), image.bytesPerLine(), image.format()};
}

static QImage shaded(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            line[x] = qRgb(x & 255, y & 255, ((x * y) >> 6) & 255);
        }
    }
    return image;
}

/// Nobody has to wait for them.
static DecodePipeline::Decoders readyPictures(const QImage &large, const QImage &small)
{
    return {.picture =
                [&](const std::filesystem::path &, std::optional<int> maxPixel) {
                    const bool isSmall = maxPixel == DecodePipeline::thumbnailMaxPixel;
                    return another(isSmall ? small : large);
                },
            .videoFrame = [&](const std::filesystem::path &) { return another(small); }};
}

/// What of a frame is the machine's: of an empty window, and of one with nothing but a picture.
static void printFloor(QSize size, const QImage &picture)
{
    BareWindow bare(size);
    bare.measure(60);
    std::printf("  an empty window: %.1f ms a frame, main thread's longest block %.1f ms\n",
                bare.frameTime(), bare.longestBlock());
    bare.measure(60, [&] { return another(picture); });
    std::printf("  a picture alone: %.1f ms a frame, main thread's longest block %.1f ms\n",
                bare.frameTime(), bare.longestBlock());
    bare.close();
}

static double at(std::vector<double> values, double share)
{
    std::ranges::sort(values);
    return values.empty() ? 0 : values[static_cast<size_t>(share * double(values.size() - 1))];
}

static void printWalk(const KeyWalk &walk)
{
    std::vector<double> frames;
    int passed = 0;
    const auto steps = walk.steps();
    for (const auto &step : steps) {
        if (step.shown == KeyWalk::Clock::time_point()) {
            ++passed;
        } else {
            frames.push_back(std::chrono::duration<double>(step.shown - step.pressed).count() * 60);
        }
    }
    std::printf("  %zu steps, %d not drawn; key to frame p50 %.2f, p99 %.2f, longest %.2f frames\n"
                "  main thread's longest block %.1f ms, its work for one step %.3f ms; %.2f frames "
                "a step\n",
                steps.size(), passed, at(frames, 0.5), at(frames, 0.99), at(frames, 1),
                walk.longestBlock(), walk.mainThreadCost(), walk.frames() / double(steps.size()));
    std::printf("cost %.6f\n", walk.mainThreadCost());
}

/// What the main thread works for @p act and all that follows from it.
template<typename Act>
static void printWork(const char *name, int times, Act act)
{
    std::vector<double> whole;
    std::vector<double> atOnce;
    for (int time = 0; time < times; ++time) {
        const double before = KeyWalk::processorTime();
        act();
        atOnce.push_back(KeyWalk::processorTime() - before);
        QEventLoop loop;
        QTimer::singleShot(std::chrono::milliseconds(250), &loop, &QEventLoop::quit);
        loop.exec();
        whole.push_back(KeyWalk::processorTime() - before);
    }
    std::printf("  %s: %.3f ms at once (longest %.3f), %.2f ms with its frames\n", name,
                at(atOnce, 0.5), at(atOnce, 1), at(whole, 0.5));
}

static void printDecisions(KestleApp &kestle)
{
    auto &app = kestle.appState();
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers, const QString &text) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, modifiers, text);
            QCoreApplication::sendEvent(kestle.window(), &event);
        }
    };
    const auto count = app.session()->items().size();
    {
        const AppState::Operation operation(app);
        for (qint64 index = 0; index < count; index += 2) {
            app.session()->toggle(app.session()->items().at(index).id);
        }
        app.recordChange();
    }
    app.selectItem(count / 2);
    std::printf("  with %lld rejects, main thread's work:\n",
                static_cast<long long>(app.session()->rejectedCount()));
    const auto reject = [&] { press(Qt::Key_X, {}, QStringLiteral("x")); };
    printWork("step", 10, [&] { press(Qt::Key_Right, {}, {}); });
    printWork("X", 10, reject);
    printWork("undo", 10, [&] { app.undoDecision(); });
    printWork("to the review", 3, [&] {
        app.backToCulling();
        app.goToReview();
    });
    app.setReviewSelection(app.session()->rejectedCount() / 2);
    printWork("rescue", 10, reject);
    printWork("undo in the review", 10, [&] { app.undoDecision(); });
    printWork("back to culling", 3, [&] {
        app.goToReview();
        app.backToCulling();
    });
}

int main(int argc, char **argv)
{
    if (argc != 5) {
        std::fputs("usage: step-work CARD FIRST STEPS EDGE\n", stderr);
        return 2;
    }
    QStandardPaths::setTestModeEnabled(true);
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Kestle"));
    KestleApp::Extras extras;
    extras.moreVolumes.push_back(std::make_unique<OneVolume>(argv[1]));
    const int edge = std::atoi(argv[4]);
    const QImage large = shaded({edge, edge * 2 / 3});
    const QImage small = shaded(thumbnailSize);
    extras.decoders = readyPictures(large, small);
    KestleApp kestle(std::move(extras));
    if (!kestle.show()) {
        return 1;
    }
    QEventLoop settling;
    QTimer::singleShot(std::chrono::seconds(1), &settling, &QEventLoop::quit);
    settling.exec();
    printFloor(kestle.window()->size(), large);

    KeyWalk walk(kestle, keysPerSecond, std::atoll(argv[2]), std::atoi(argv[3]), [&] {
        printWalk(walk);
        printDecisions(kestle);
        QCoreApplication::quit();
    });
    walk.start();
    QGuiApplication::exec();
    std::fflush(stdout);
    kestle.finish();
    return 0;
}
