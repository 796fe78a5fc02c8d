// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/instance/SingleInstance.h"
#include "ui/shell/KestleApp.h"
#include "ui/shell/QuitGuard.h"

#include <QGuiApplication>

/// For the answer whether Kestle runs already; by then the bus itself hangs.
static constexpr std::chrono::milliseconds patienceWithBus = std::chrono::seconds(1);

/// There are no options; a path that the desktop hands over is accepted and ignored.
int main(int argc, char **argv)
{
    QuitGuard quitGuard;
    QGuiApplication application(argc, argv);
    KestleApp::introduce();
    SingleInstance instance(KestleApp::applicationId.toString());

    KestleApp kestle;
    if (instance.role(patienceWithBus) == SingleInstance::Role::Second) {
        return 0;
    }
    if (!kestle.show()) {
        return 1;
    }
    QObject::connect(&instance, &SingleInstance::activationWanted, kestle.window(),
                     [&kestle](const QString &token) { kestle.raise(token); });
    const int status = QGuiApplication::exec();
    quitGuard.arm(KestleApp::patienceWithWork, status);
    kestle.finish();
    quitGuard.arm(KestleApp::patienceAtTheEnd, status);
    return status;
}
