// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// walk-work CARD KEYS-PER-SECOND STEPS: walks through the card in the real window with a key held,
// and prints how soon each item was shown sharply. bench/walk runs it.

#include "bench/Pulse.h"
#include "platform/volumes/MountedVolumes.h"
#include "ui/loaders/ScreenImageLoader.h"
#include "ui/shell/KestleApp.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickItem>
#include <QStandardPaths>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Kind = Phase::Kind;

namespace {

class OneVolume final : public MountedVolumes {
public:
    explicit OneVolume(const char *mountPoint)
        : MountedVolumes(nullptr)
    {
        m_volumes.append({.mountPoint = mountPoint,
                          .uuid = QStringLiteral("WALK"),
                          .label = QStringLiteral("WALK"),
                          .isRemovable = true});
    }

    [[nodiscard]] QList<MountedVolume> volumes() const override { return m_volumes; }

private:
    QList<MountedVolume> m_volumes;
};

/// The loader of the picture that is looked at: what a Loader made is a child of items only.
ScreenImageLoader *findLoader(const QQuickItem *item)
{
    if (auto *const loader = item->findChild<ScreenImageLoader *>()) {
        return loader;
    }
    for (const auto *child : item->childItems()) {
        if (auto *const loader = findLoader(child)) {
            return loader;
        }
    }
    return nullptr;
}

/// A walk of the session's index, and when each step was drawn sharply.
class Walk : public QObject {
public:
    Walk(KestleApp &kestle, int keysPerSecond, int steps)
        : m_kestle(kestle)
        , m_between(std::chrono::nanoseconds(1s) / keysPerSecond)
        , m_steps(steps)
    {
    }

    ~Walk() override
    {
        if (m_presser.joinable()) {
            m_presser.join();
        }
    }

    /// Watches the window's frames and starts on the card as a user does.
    void start()
    {
        // Drawing may happen on another thread; the main thread waits for it here, and with it all
        // that is to be drawn.
        connect(
            m_kestle.window(), &QQuickWindow::afterSynchronizing, this, [this] { look(); },
            Qt::DirectConnection);
        connect(
            m_kestle.window(), &QQuickWindow::frameSwapped, this, [this] { frameIsThere(); },
            Qt::DirectConnection);
        connect(
            &m_kestle.appState(), &AppState::phaseChanged, this, [this] { begin(); },
            Qt::QueuedConnection);
        begin();
    }

    void print() const
    {
        const auto frame = std::chrono::nanoseconds(1s) / 60;
        std::vector<double> late;
        int inTime = 0;
        int shown = 0;
        for (size_t step = 1; step < m_pressed.size(); ++step) {
            if (m_shown[step] == Clock::time_point()) {
                continue;
            }
            ++shown;
            const auto took = m_shown[step] - m_pressed[step];
            if (took <= frame) {
                ++inTime;
            } else {
                late.push_back(std::chrono::duration<double, std::milli>(took).count());
            }
        }
        std::ranges::sort(late);
        const auto at = [&](double share) {
            return late.empty() ? 0 : late[static_cast<size_t>(share * double(late.size() - 1))];
        };
        std::printf("%zu steps: sharp within a frame %.1f %%, later %.1f %% (median %.0f ms, "
                    "9 of 10 within %.0f ms), passed before %.1f %%; main thread's longest block "
                    "%.1f ms\n",
                    m_pressed.size() - 1, share(inTime), share(int(late.size())), at(0.5), at(0.9),
                    share(int(m_pressed.size()) - 1 - shown), m_pulse ? m_pulse->longest() : 0);
    }

private:
    [[nodiscard]] double share(int count) const
    {
        return 100.0 * count / double(m_pressed.size() - 1);
    }

    void press(Qt::Key key)
    {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QCoreApplication::postEvent(m_kestle.window(), new QKeyEvent(type, key, {}));
        }
    }

    void begin()
    {
        const auto phase = m_kestle.appState().phase().kind;
        if (phase == Kind::CardReady) {
            press(Qt::Key_Return);
        } else if (phase == Kind::Culling && !m_presser.joinable()) {
            m_shown.resize(static_cast<size_t>(m_steps) + 1);
            m_pressed.resize(m_shown.size());
            m_presser = std::thread([this] { pressKeys(); });
        }
    }

    /// On a thread of its own, so that the user is no slower than he is when the program is.
    void pressKeys()
    {
        std::this_thread::sleep_for(3s); // a look at the first picture
        QMetaObject::invokeMethod(this, [this] {
            m_loader = findLoader(m_kestle.window()->contentItem());
            m_pulse.emplace();
        });
        auto next = Clock::now();
        for (int step = 1; step <= m_steps; ++step) {
            std::this_thread::sleep_until(next);
            m_pressed[static_cast<size_t>(step)] = Clock::now();
            press(Qt::Key_Right);
            next += m_between;
        }
        std::this_thread::sleep_for(2s);
        QMetaObject::invokeMethod(this, [] { QCoreApplication::quit(); });
    }

    void look()
    {
        auto &app = m_kestle.appState();
        const auto *session = app.session();
        m_sharp = -1;
        if (app.phase().kind != Kind::Culling || !session || !session->currentItem()) {
            return;
        }
        const auto wanted = app.pipeline()->cachedScreenImage(*session->currentItem());
        if (m_loader && !m_loader->isStale() && !wanted.isNull() &&
            m_loader->image().cacheKey() == wanted.cacheKey()) {
            m_sharp = session->currentIndex();
        }
    }

    void frameIsThere()
    {
        if (m_sharp < 0 || m_sharp >= qint64(m_shown.size())) {
            return;
        }
        auto &shown = m_shown[static_cast<size_t>(m_sharp)];
        if (shown == Clock::time_point()) {
            shown = Clock::now();
        }
    }

    KestleApp &m_kestle;
    std::chrono::nanoseconds m_between;
    int m_steps;
    std::vector<Clock::time_point> m_pressed;
    std::vector<Clock::time_point> m_shown;
    QPointer<ScreenImageLoader> m_loader;
    qint64 m_sharp = -1; ///< of the thread that draws
    std::optional<Pulse> m_pulse;
    std::thread m_presser;
};

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fputs("usage: walk-work CARD KEYS-PER-SECOND STEPS\n", stderr);
        return 2;
    }
    QStandardPaths::setTestModeEnabled(true);
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Kestle"));
    KestleApp::Extras extras;
    extras.moreVolumes.push_back(std::make_unique<OneVolume>(argv[1]));
    KestleApp kestle(std::move(extras));
    if (!kestle.show()) {
        return 1;
    }
    Walk walk(kestle, std::atoi(argv[2]), std::atoi(argv[3]));
    walk.start();
    QGuiApplication::exec();
    walk.print();
    std::fflush(stdout);
    kestle.finish();
    return 0;
}
