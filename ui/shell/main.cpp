// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/shell/KestleApp.h"
#include "ui/shell/QuitGuard.h"

#include <QGuiApplication>

using namespace Qt::StringLiterals;

/// There are no options; a path that the desktop hands over is accepted and ignored.
int main(int argc, char **argv)
{
    QuitGuard quitGuard;
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(u"Kestle"_s);
    QGuiApplication::setApplicationDisplayName(u"Kestle"_s);

    KestleApp kestle;
    if (!kestle.show()) {
        return 1;
    }
    const int status = QGuiApplication::exec();
    quitGuard.arm(KestleApp::patienceWithWork, status);
    kestle.finish();
    quitGuard.arm(KestleApp::patienceAtTheEnd, status);
    return status;
}
