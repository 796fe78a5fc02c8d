// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "bench/Pulse.h"
#include "ui/items/FitImage.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QQuickWindow>

#include <functional>
#include <optional>

/// A window that is drawn again and again: what a frame costs where nothing is in it, or a picture.
class BareWindow {
public:
    explicit BareWindow(QSize size)
    {
        m_picture.setPool(&m_pool);
        m_picture.setParentItem(m_window.contentItem());
        m_picture.setSize(size);
        m_window.resize(size);
        m_window.show();
    }

    /// Draws @p frames frames, each in another colour or with another picture.
    void measure(int frames, const std::function<QImage()> &picture = {})
    {
        QEventLoop loop;
        int drawn = -10; // the first frames prepare what the others use
        const auto drawNext = [&] {
            if (++drawn == 0) {
                m_pulse.emplace();
                m_time.start();
            }
            if (drawn >= frames) {
                loop.quit();
                return;
            }
            if (picture) {
                m_picture.setImage(picture());
            }
            m_window.setColor(QColor::fromHsv((drawn + 10) % 360, 200, 200));
            m_window.update();
        };
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, &loop, drawNext,
                         Qt::QueuedConnection);
        drawNext();
        loop.exec();
        m_frameTime = double(m_time.nsecsElapsed()) / 1e6 / frames;
        m_longestBlock = m_pulse->longest();
        m_pulse.reset();
    }

    void close() { m_window.close(); }

    /// Milliseconds from one frame to the next.
    [[nodiscard]] double frameTime() const { return m_frameTime; }

    /// Milliseconds.
    [[nodiscard]] double longestBlock() const { return m_longestBlock; }

private:
    ScalingPool m_pool;
    QQuickWindow m_window;
    FitImage m_picture;
    std::optional<Pulse> m_pulse;
    QElapsedTimer m_time;
    double m_frameTime = 0;
    double m_longestBlock = 0;
};
