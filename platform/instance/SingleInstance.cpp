// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/instance/SingleInstance.h"

#include "platform/instance/ActivationCalls.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>

#include <thread>

using namespace Qt::StringLiterals;
using Role = SingleInstance::Role;

constexpr auto connectionName = "kestle-instance"_L1;

/// What the bus answers to RequestName, by the D-Bus Specification.
constexpr uint exists = 3;
constexpr uint doNotQueue = 4;

/// A bus that has to answer only this has long done so.
constexpr int busTimeout = 2'000; // milliseconds
constexpr std::chrono::milliseconds betweenRequests(200);

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

/// Whether who holds @p name has answered.
static bool wake(const QDBusConnection &bus, const QString &name,
                 std::chrono::milliseconds patience)
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
    return bus.call(call, QDBus::Block, int(patience.count())).type() == QDBusMessage::ReplyMessage;
}

/// Asks and, where somebody was there before, tells it. Blocks.
static Role claim(const QString &name, SingleInstance::Patience patience, ActivationCalls *calls,
                  std::atomic_bool &isTaken)
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
    if (request(bus, name) != exists) {
        return Role::First;
    }
    isTaken = true;
    if (wake(bus, name, patience.answer)) {
        return Role::Second;
    }
    // It has ended, or is about to, or hangs; two of them would write the same files.
    const auto end = std::chrono::steady_clock::now() + patience.end;
    while (request(bus, name) == exists) {
        if (std::chrono::steady_clock::now() >= end) {
            return Role::Second;
        }
        std::this_thread::sleep_for(betweenRequests);
    }
    return Role::First;
}

SingleInstance::SingleInstance(const QString &name, QObject *parent)
    : SingleInstance(name, Patience(), parent)
{
}

SingleInstance::SingleInstance(const QString &name, Patience patience, QObject *parent)
    : QObject(parent)
    , m_calls(std::make_unique<ActivationCalls>())
{
    connect(m_calls.get(), &ActivationCalls::wanted, this, &SingleInstance::activationWanted);
    std::packaged_task<Role()> task([name, patience, calls = m_calls.get(), isTaken = m_isTaken] {
        return claim(name, patience, calls, *isTaken);
    });
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
    const bool isThere = m_answer.wait_for(patience) == std::future_status::ready;
    return isThere || *m_isTaken ? m_answer.get() : Role::First;
}
