// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/instance/SingleInstance.h"

#include "platform/instance/ActivationCalls.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>

using namespace Qt::StringLiterals;
using Role = SingleInstance::Role;

constexpr auto connectionName = "kestle-instance"_L1;

/// What the bus answers to RequestName, by the D-Bus Specification.
constexpr uint exists = 3;
constexpr uint doNotQueue = 4;

/// A bus that has to answer only this has long done so; a program may be busy.
constexpr int busTimeout = 2'000;     // milliseconds
constexpr int programTimeout = 5'000; // milliseconds

/// Without asking libdbus, which would begin a bus of its own.
static bool hasSessionBus()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s);
}

static QString pathOf(const QString &name)
{
    QString path = name;
    return u'/' + path.replace(u'.', u'/').replace(u'-', u'_');
}

static uint request(const QDBusConnection &bus, const QString &name)
{
    auto call = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/"_s,
                                               u"org.freedesktop.DBus"_s, u"RequestName"_s);
    call << name << doNotQueue;
    const auto reply = bus.call(call, QDBus::Block, busTimeout);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toUInt() : 0;
}

/// Whether somebody holds @p name and was told.
static bool wake(const QDBusConnection &bus, const QString &name)
{
    QVariantMap platformData;
    for (const auto &[key, variable] : {std::pair("activation-token"_L1, "XDG_ACTIVATION_TOKEN"),
                                        std::pair("desktop-startup-id"_L1, "DESKTOP_STARTUP_ID")}) {
        if (const auto value = qEnvironmentVariable(variable); !value.isEmpty()) {
            platformData.insert(key, value);
        }
    }
    auto call = QDBusMessage::createMethodCall(name, pathOf(name), u"org.freedesktop.Application"_s,
                                               u"Activate"_s);
    call.setAutoStartService(false);
    call << platformData;
    const auto reply = bus.call(call, QDBus::Block, programTimeout);
    // One that does not answer is still there: two of them would write the same files.
    return reply.type() != QDBusMessage::ErrorMessage ||
           (reply.errorName() != "org.freedesktop.DBus.Error.ServiceUnknown"_L1 &&
            reply.errorName() != "org.freedesktop.DBus.Error.NameHasNoOwner"_L1);
}

/// Asks and, where somebody was there before, tells it. Blocks.
static Role claim(const QString &name, ActivationCalls *calls)
{
    if (!hasSessionBus()) {
        return Role::First;
    }
    auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
    if (!bus.isConnected()) {
        return Role::First;
    }
    // Before the name is held, so that nobody finds it without its calls.
    bus.registerObject(pathOf(name), calls, QDBusConnection::ExportAllSlots);
    for (int tries = 0; tries < 3; ++tries) {
        if (request(bus, name) != exists) {
            return Role::First;
        }
        if (wake(bus, name)) {
            return Role::Second;
        } // else the first one has just ended
    }
    return Role::First;
}

SingleInstance::SingleInstance(const QString &name, QObject *parent)
    : QObject(parent)
    , m_calls(std::make_unique<ActivationCalls>())
{
    connect(m_calls.get(), &ActivationCalls::wanted, this, &SingleInstance::activationWanted);
    std::packaged_task<Role()> task([name, calls = m_calls.get()] { return claim(name, calls); });
    m_answer = task.get_future();
    m_thread = std::thread(std::move(task));
}

SingleInstance::~SingleInstance()
{
    if (m_answer.valid() &&
        m_answer.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        m_thread.detach(); // waits for a bus that hangs, and may still need the calls
        (void)m_calls.release();
        return;
    }
    m_thread.join();
    QDBusConnection::disconnectFromBus(connectionName);
}

Role SingleInstance::role(std::chrono::milliseconds patience)
{
    return m_answer.wait_for(patience) == std::future_status::ready ? m_answer.get() : Role::First;
}
