// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/Rasterizer.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <algorithm>
#include <array>

Rasterizer *Rasterizer::of(QQuickWindow *window)
{
    if (auto *const known = window->findChild<Rasterizer *>({}, Qt::FindDirectChildrenOnly)) {
        return known;
    }
    return new Rasterizer(window);
}

Rasterizer::Rasterizer(QQuickWindow *window)
    : QObject(window)
    , m_window(window)
{
    // From here on a frame has its context; the connection serves one frame.
    connect(window, &QQuickWindow::beforeRenderPassRecording, this, &Rasterizer::lookAtOpenGL,
            static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
}

bool Rasterizer::isPainter() const
{
    return m_window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
}

bool Rasterizer::isProcessor() const
{
    return isPainter() || (m_isProcessorsOpenGL && !m_isPretended);
}

void Rasterizer::pretendToBeACard()
{
    m_isPretended = true;
    Q_EMIT changed();
}

bool Rasterizer::isProcessors(QByteArrayView renderer)
{
    // Mesa's three and Google's.
    static constexpr std::array names{"llvmpipe", "softpipe", "Software Rasterizer", "SwiftShader"};
    return std::ranges::any_of(names, [&](const char *name) { return renderer.contains(name); });
}

/// On the thread that draws.
void Rasterizer::lookAtOpenGL()
{
    const auto *context = QOpenGLContext::currentContext();
    if (!context) {
        return; // another API, or the painter
    }
    const auto *name = context->functions()->glGetString(GL_RENDERER);
    if (name && isProcessors(reinterpret_cast<const char *>(name))) {
        m_isProcessorsOpenGL = true;
        QMetaObject::invokeMethod(this, &Rasterizer::changed, Qt::QueuedConnection);
    }
}
