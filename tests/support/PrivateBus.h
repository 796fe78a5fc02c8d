// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QProcess>
#include <QTemporaryDir>

/// A message bus of the test's own, without any service; it ends with the test.
/// Calls to one of the @p activatable names wait until somebody takes that name, as if the bus had
/// started a service that is slow.
class PrivateBus {
public:
    explicit PrivateBus(const QStringList &activatable = {});
    ~PrivateBus();
    Q_DISABLE_COPY_MOVE(PrivateBus)

    /// Empty when the bus could not be started.
    [[nodiscard]] const QString &address() const { return m_address; }

    /// At once: clients see the bus end, not the other clients.
    void stop();

private:
    [[nodiscard]] bool configure(const QStringList &activatable) const;

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};
