// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QFile>

/// How much more memory the program has had at once since the beginning of this object's life. Of
/// Linux alone: elsewhere nothing is measured.
class PeakMemory {
public:
    PeakMemory()
    {
        QFile reset(QStringLiteral("/proc/self/clear_refs"));
        if (reset.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
            reset.write("5"); // proc(5): the peak becomes what is there now
        }
        m_before = peak();
    }

    [[nodiscard]] qint64 bytes() const { return peak() - m_before; }

private:
    static qint64 peak()
    {
        QFile status(QStringLiteral("/proc/self/status"));
        if (!status.open(QIODevice::ReadOnly)) {
            return 0;
        }
        const auto text = status.readAll();
        const auto at = text.indexOf("VmHWM:");
        const auto kibibytes = at < 0 ? QByteArray() : text.mid(at + 6, 40).split('k').constFirst();
        return kibibytes.trimmed().toLongLong() * 1024;
    }

    qint64 m_before = 0;
};
