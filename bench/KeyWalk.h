// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "bench/Pulse.h"
#include "ui/loaders/ScreenImageLoader.h"
#include "ui/shell/KestleApp.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQuickItem>

#include <ctime>
#include <functional>
#include <thread>
#include <vector>

/// Culls the only card in the real window, holds Right, and notes when each step was drawn sharply.
class KeyWalk : public QObject {
public:
    using Clock = std::chrono::steady_clock;
    using Kind = Phase::Kind;

    struct Step {
        Clock::time_point pressed;
        Clock::time_point shown; ///< when its first sharp frame was there; none if it was passed
    };

    /// Walks from the item @p first on. @p done is called on the main thread at the end.
    KeyWalk(KestleApp &kestle, int keysPerSecond, qint64 first, int steps,
            std::function<void()> done)
        : m_kestle(kestle)
        , m_between(std::chrono::nanoseconds(std::chrono::seconds(1)) / keysPerSecond)
        , m_first(first)
        , m_steps(static_cast<size_t>(steps) + 1)
        , m_done(std::move(done))
    {
    }

    ~KeyWalk() override
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

    /// One for each key, in order; to be asked at the end, as is what follows.
    [[nodiscard]] std::vector<Step> steps() const { return {m_steps.begin() + 1, m_steps.end()}; }

    [[nodiscard]] double longestBlock() const { return m_longestBlock; }

    /// Milliseconds of processor time on the main thread, for one step.
    [[nodiscard]] double mainThreadCost() const
    {
        return m_mainThreadTime / double(m_steps.size() - 1);
    }

    /// How many frames were drawn while keys were pressed.
    [[nodiscard]] int frames() const { return m_frames; }

    /// Of the thread that calls, in milliseconds.
    [[nodiscard]] static double processorTime()
    {
        timespec time = {};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
    }

private:
    /// The loader of the picture that is looked at: what a Loader made is a child of items only.
    static ScreenImageLoader *findLoader(const QQuickItem *item)
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

    void post(QEvent::Type type, Qt::Key key, bool repeated = false)
    {
        QCoreApplication::postEvent(m_kestle.window(),
                                    new QKeyEvent(type, key, {}, QString(), repeated));
    }

    void begin()
    {
        const auto phase = m_kestle.appState().phase().kind;
        if (phase == Kind::CardReady) {
            post(QEvent::KeyPress, Qt::Key_Return);
            post(QEvent::KeyRelease, Qt::Key_Return);
        } else if (phase == Kind::Culling && !m_presser.joinable()) {
            if (m_first > 0) {
                m_kestle.appState().selectItem(m_first);
            }
            m_presser = std::thread([this] { pressKeys(); });
        }
    }

    /// On a thread of its own, so that the user is no slower than he is when the program is.
    void pressKeys()
    {
        std::this_thread::sleep_for(std::chrono::seconds(3)); // a look at the first picture
        QMetaObject::invokeMethod(
            this, [this] { beginMeasuring(); }, Qt::BlockingQueuedConnection);
        auto next = Clock::now();
        for (size_t step = 1; step < m_steps.size(); ++step) {
            std::this_thread::sleep_until(next);
            m_steps[step].pressed = Clock::now();
            post(QEvent::KeyPress, Qt::Key_Right, step > 1);
            next += m_between;
        }
        post(QEvent::KeyRelease, Qt::Key_Right);
        std::this_thread::sleep_for(std::chrono::seconds(2));
        QMetaObject::invokeMethod(this, [this] { endMeasuring(); });
    }

    void beginMeasuring()
    {
        m_loader = findLoader(m_kestle.window()->contentItem());
        m_pulse.emplace();
        m_frames = 0;
        m_mainThreadTime = -processorTime();
    }

    void endMeasuring()
    {
        m_mainThreadTime += processorTime();
        m_longestBlock = m_pulse->longest();
        m_pulse.reset();
        m_done();
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
            m_sharp = session->currentIndex() - m_first;
        }
    }

    void frameIsThere()
    {
        ++m_frames;
        if (m_sharp < 0 || m_sharp >= qint64(m_steps.size())) {
            return;
        }
        auto &shown = m_steps[static_cast<size_t>(m_sharp)].shown;
        if (shown == Clock::time_point()) {
            shown = Clock::now();
        }
    }

    KestleApp &m_kestle;
    std::chrono::nanoseconds m_between;
    qint64 m_first;
    std::vector<Step> m_steps; ///< by distance from the first item; that one was not stepped to
    std::function<void()> m_done;
    QPointer<ScreenImageLoader> m_loader;
    qint64 m_sharp = -1; ///< of the thread that draws
    int m_frames = 0;    ///< of the thread that draws
    std::optional<Pulse> m_pulse;
    double m_longestBlock = 0;
    double m_mainThreadTime = 0;
    std::thread m_presser;
};
