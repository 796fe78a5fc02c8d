// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/LateLibraries.h"

#include "platform/libav/Libav.h"
#include "platform/mpv/Mpv.h"

#include <QQuickWindow>

void LateLibraries::loadAfterFirstFrameOf(QQuickWindow *window)
{
    QObject::connect(
        window, &QQuickWindow::frameSwapped, window,
        [this] {
            m_pool.start([] {
                loadLibav();
                loadMpv();
            });
        },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}
