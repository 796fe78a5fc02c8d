// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantMap>

/// The calls of org.freedesktop.Application, by the Desktop Entry Specification 1.5. Whatever is to
/// be opened, the program comes to the front.
class ActivationCalls : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    using QObject::QObject;

public Q_SLOTS:
    void Activate(const QVariantMap &platformData) { tell(platformData); }

    void Open(const QStringList &, const QVariantMap &platformData) { tell(platformData); }

    void ActivateAction(const QString &, const QVariantList &, const QVariantMap &platformData)
    {
        tell(platformData);
    }

Q_SIGNALS:
    void wanted(const QString &token);

private:
    void tell(const QVariantMap &platformData)
    {
        Q_EMIT wanted(platformData.value(QStringLiteral("activation-token")).toString());
    }
};
