// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/PrivateBus.h"

#include <QFile>

#include <sys/prctl.h>

#include <csignal>

using namespace Qt::StringLiterals;

PrivateBus::PrivateBus()
{
    const auto configuration = m_folder.filePath(u"bus.conf"_s);
    QFile file(configuration);
    if (!file.open(QIODevice::WriteOnly)) {
        return;
    }
    file.write("<busconfig><type>session</type><listen>unix:dir=" + m_folder.path().toUtf8() +
               "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
               "<allow receive_sender=\"*\"/><allow own=\"*\"/></policy></busconfig>");
    file.close();

    m_daemon.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_daemon.start(u"dbus-daemon"_s,
                   {u"--config-file="_s + configuration, u"--nofork"_s, u"--print-address"_s});
    while (m_daemon.waitForReadyRead(5000)) {
        if (m_daemon.canReadLine()) {
            m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
            return;
        }
    }
}

PrivateBus::~PrivateBus()
{
    stop();
}

void PrivateBus::stop()
{
    m_daemon.terminate();
    m_daemon.waitForFinished(5000);
}
