// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <cstdio>

/// An empty window of Qt Quick, which says when its first frame is there and ends.
int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData(
        "import QtQuick\nWindow { width: 1200; height: 800; visible: true; color: 'black' }");
    auto *const window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!window) {
        return 1;
    }
    QObject::connect(
        window, &QQuickWindow::frameSwapped, window,
        [] {
            std::puts("frame");
            std::fflush(stdout);
            QCoreApplication::quit();
        },
        Qt::QueuedConnection);
    return QGuiApplication::exec();
}
