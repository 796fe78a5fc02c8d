// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "HandMadeTree.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

/// A disk service in the test's own process: it answers with a hand-made tree and sends the notices
/// that the real one sends.
class FakeUDisks final : public QDBusVirtualObject {
    Q_OBJECT

public:
    explicit FakeUDisks(const QDBusConnection &bus);

    HandMadeTree made;
    int reads = 0;             ///< how often the tree was asked for
    QString error;             ///< when set, questions are answered with this error
    bool holdsAnswers = false; ///< keeps answers back until answerHeld()

    bool start();
    void stop();

    void insertCard(const QString &disk, const QString &uuid, const QString &label,
                    const QByteArrayList &mountPoints);
    void removeCard(const QString &disk);
    void mount(const QString &block, const QByteArrayList &mountPoints);
    void rename(const QString &block, const QString &label);
    void sendPropertiesChanged(const QString &path, const char *interface,
                               const QVariantMap &properties);

    /// Answers the held questions, the newest first.
    void answerHeld();

    [[nodiscard]] QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QDBusConnection m_bus;
    QList<QDBusMessage> m_held;
};
