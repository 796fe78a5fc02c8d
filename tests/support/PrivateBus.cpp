// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/PrivateBus.h"

#include <QFile>

#include <sys/prctl.h>

#include <csignal>

using namespace Qt::StringLiterals;

static bool write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

PrivateBus::PrivateBus(const QStringList &activatable)
{
    if (!configure(activatable)) {
        return;
    }
    m_daemon.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_daemon.start(u"dbus-daemon"_s, {u"--config-file="_s + m_folder.filePath(u"bus.conf"_s),
                                      u"--nofork"_s, u"--print-address"_s});
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
    m_daemon.kill();
    m_daemon.waitForFinished(5000);
}

bool PrivateBus::configure(const QStringList &activatable) const
{
    for (const auto &name : activatable) {
        // A program that ends well is taken for one that goes on in the background.
        if (!write(m_folder.filePath(name + u".service"_s),
                   "[D-BUS Service]\nName=" + name.toUtf8() + "\nExec=/bin/true\n")) {
            return false;
        }
    }
    const auto folder = m_folder.path().toUtf8();
    return write(m_folder.filePath(u"bus.conf"_s),
                 "<busconfig><type>session</type><listen>unix:dir=" + folder +
                     "</listen><servicedir>" + folder +
                     "</servicedir><policy context=\"default\"><allow send_destination=\"*\"/>"
                     "<allow receive_sender=\"*\"/><allow own=\"*\"/></policy></busconfig>");
}
