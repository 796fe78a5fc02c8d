// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// video-work CARD first|block|leave|leave-seek: steps from a photo on to a clip in the real window.
// Prints "ready" half a second before the step, then the milliseconds until the clip's first frame
// is drawn, or those of the main thread's longest block within the three seconds behind the step;
// or within the second behind the step back to the photo, while the clip plays or just seeks. The
// photo comes first on the card; what the clip shows left of its middle is not black. bench/video
// runs it.

#include "bench/OneVolume.h"
#include "bench/Pulse.h"
#include "ui/shell/KestleApp.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QStandardPaths>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>

using namespace std::chrono_literals;
using Kind = Phase::Kind;

namespace {

void wait(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

void press(QWindow *window, Qt::Key key)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, {});
        QCoreApplication::sendEvent(window, &event);
    }
}

bool showsClip(QQuickWindow *window)
{
    const QImage grab = window->grabWindow();
    return qGray(grab.pixel(grab.width() / 4, grab.height() / 3)) > 40;
}

/// Nothing when it does not come.
std::optional<double> firstFrame(QQuickWindow *window)
{
    std::atomic_bool isDrawn = false;
    const auto frames = QObject::connect(
        window, &QQuickWindow::frameSwapped, window, [&] { isDrawn = true; }, Qt::DirectConnection);
    QElapsedTimer since;
    since.start();
    press(window, Qt::Key_Right);
    while (since.elapsed() < 20'000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        if (isDrawn.exchange(false)) {
            const double drawn =
                double(since.nsecsElapsed()) / 1e6; // a grab shows what is newer yet
            if (showsClip(window)) {
                QObject::disconnect(frames);
                return drawn;
            }
        }
    }
    return std::nullopt;
}

/// Of the step off the clip.
std::optional<double> longestBlockOnLeaving(QQuickWindow *window, bool isSeeking)
{
    if (!firstFrame(window)) {
        return std::nullopt;
    }
    wait(700ms);
    if (isSeeking) {
        press(window, Qt::Key_L);
        wait(15ms);
    }
    const Pulse pulse;
    wait(20ms);
    press(window, Qt::Key_Left);
    wait(1s);
    return pulse.longest();
}

double longestBlock(QWindow *window)
{
    const Pulse pulse;
    wait(100ms);
    press(window, Qt::Key_Right);
    wait(3s);
    return pulse.longest();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fputs("usage: video-work CARD first|block|leave|leave-seek\n", stderr);
        return 2;
    }
    QStandardPaths::setTestModeEnabled(true);
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Kestle"));
    KestleApp::Extras extras;
    extras.moreVolumes.push_back(std::make_unique<OneVolume>(argv[1]));
    KestleApp kestle(std::move(extras));
    if (!kestle.show()) {
        return 1;
    }
    auto &app = kestle.appState();
    QElapsedTimer patience;
    patience.start();
    while (app.phase().kind != Kind::Culling && patience.elapsed() < 20'000) {
        if (app.phase().kind == Kind::CardReady) {
            app.startCulling();
        }
        wait(20ms);
    }
    if (app.phase().kind != Kind::Culling) {
        return 1;
    }
    app.selectItem(0);
    wait(1s);
    std::puts("ready");
    std::fflush(stdout);
    wait(500ms);
    const std::string_view what = argv[2];
    const auto result = what == "first" ? firstFrame(kestle.window())
                        : what == "block"
                            ? std::optional(longestBlock(kestle.window()))
                            : longestBlockOnLeaving(kestle.window(), what == "leave-seek");
    std::printf("%.1f\n", result.value_or(-1));
    std::fflush(stdout);
    std::_Exit(0); // a card that hangs would be waited for
}
