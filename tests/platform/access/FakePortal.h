// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <optional>

/// The desktop's portal in the test's own process, with a file chooser whose user is the test.
class FakePortal final : public QDBusVirtualObject {
    Q_OBJECT

public:
    explicit FakePortal(const QDBusConnection &bus);
    ~FakePortal() override;

    QVariant version = 4U; ///< of the file chooser
    QString versionError;  ///< when set, the version is answered with this error
    QString openError;     ///< when set, the dialog is answered with this error
    QString requestPath;   ///< when set, stands for every question, instead of what is usual
    QString heldCall;      ///< answers to this method are kept back until answerHeld()

    int versionCalls = 0;
    QList<QDBusMessage> opened; ///< calls of OpenFile
    QStringList closed;         ///< objects that were asked to close

    bool start();
    void stop();
    void answerHeld();

    /// What the user answers to the newest question.
    void respond(quint32 code, const QVariantMap &results = {});
    void choose(const QStringList &uris);

    /// The object that stands for the newest question; empty when there is none.
    [[nodiscard]] QString newestRequest() const;

    /// A Response as it is sent to the one who asked the newest question.
    [[nodiscard]] QDBusMessage response(const QString &path, quint32 code,
                                        const QVariantMap &results) const;

    /// The options of the newest question.
    [[nodiscard]] QVariantMap options() const;

    [[nodiscard]] QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    void answer(const QDBusMessage &call, const QString &error, const QVariant &value);

    QDBusConnection m_bus;
    QList<QDBusMessage> m_held;
};
