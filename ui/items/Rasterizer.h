// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArrayView>
#include <QObject>

#include <atomic>

class QQuickWindow;

/// Who fills a window's pixels: a graphics card, for which a filter costs nothing, or the
/// processor, be it through Qt's painter or an OpenGL that only looks like a card. What the latter
/// is, is known from the first frame on.
class Rasterizer : public QObject {
    Q_OBJECT

public:
    /// The one of @p window, which owns it. For the main thread.
    [[nodiscard]] static Rasterizer *of(QQuickWindow *window);

    /// Whether the scene graph paints with Qt's painter. For any thread.
    [[nodiscard]] bool isPainter() const;

    /// Whether the processor draws, one way or the other. For any thread.
    [[nodiscard]] bool isProcessor() const;

    /// Takes an OpenGL of the processor's for a graphics card from now on.
    void pretendToBeACard();

    /// Whether an OpenGL that names its renderer so (GL_RENDERER, OpenGL 2.1, 6.1.11) draws with
    /// the processor.
    [[nodiscard]] static bool isProcessors(QByteArrayView renderer);

Q_SIGNALS:
    /// On the main thread.
    void changed();

private:
    explicit Rasterizer(QQuickWindow *window);
    void lookAtOpenGL();

    QQuickWindow *m_window;
    std::atomic<bool> m_isProcessorsOpenGL = false;
    std::atomic<bool> m_isPretended = false;
};
