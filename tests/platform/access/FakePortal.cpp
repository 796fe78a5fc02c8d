// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "FakePortal.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

static const auto service = u"org.freedesktop.portal.Desktop"_s;
static const auto root = u"/org/freedesktop/portal/desktop"_s;
static const auto requestInterface = u"org.freedesktop.portal.Request"_s;

static QVariantMap optionsOf(const QDBusMessage &call)
{
    return qdbus_cast<QVariantMap>(call.arguments().at(2));
}

FakePortal::FakePortal(const QDBusConnection &bus)
    : m_bus(bus)
{
    qDBusRegisterMetaType<QByteArrayList>();
    m_bus.registerVirtualObject(root, this, QDBusConnection::SubPath);
}

FakePortal::~FakePortal()
{
    m_bus.unregisterObject(root, QDBusConnection::UnregisterTree);
}

bool FakePortal::start()
{
    return m_bus.registerService(service);
}

void FakePortal::stop()
{
    m_bus.unregisterService(service);
}

void FakePortal::answerHeld()
{
    heldCall.clear();
    while (!m_held.isEmpty()) {
        m_bus.send(m_held.takeFirst());
    }
}

void FakePortal::respond(quint32 code, const QVariantMap &results)
{
    m_bus.send(response(newestRequest(), code, results));
}

void FakePortal::choose(const QStringList &uris)
{
    respond(0, {{u"uris"_s, uris}});
}

QString FakePortal::newestRequest() const
{
    if (!requestPath.isEmpty() || opened.isEmpty()) {
        return requestPath;
    }
    const auto caller = opened.constLast().service().sliced(1).replace(u'.', u'_');
    return root + u"/request/"_s + caller + u'/' + options().value(u"handle_token"_s).toString();
}

QDBusMessage FakePortal::response(const QString &path, quint32 code,
                                  const QVariantMap &results) const
{
    auto signal = QDBusMessage::createTargetedSignal(opened.constLast().service(), path,
                                                     requestInterface, u"Response"_s);
    signal << code << results;
    return signal;
}

QVariantMap FakePortal::options() const
{
    return optionsOf(opened.constLast());
}

QString FakePortal::introspect(const QString &) const
{
    return {};
}

bool FakePortal::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    const auto call = message.interface() + u'.' + message.member();
    if (call == u"org.freedesktop.DBus.Properties.Get"_s && message.path() == root) {
        ++versionCalls;
        answer(message, versionError, QVariant::fromValue(QDBusVariant(version)));
        return true;
    }
    if (call == u"org.freedesktop.portal.FileChooser.OpenFile"_s && message.path() == root) {
        opened.append(message);
        answer(message, openError, QVariant::fromValue(QDBusObjectPath(newestRequest())));
        return true;
    }
    if (call == requestInterface + u".Close"_s) {
        closed.append(message.path());
        return true;
    }
    return false;
}

void FakePortal::answer(const QDBusMessage &call, const QString &error, const QVariant &value)
{
    const auto reply =
        error.isEmpty() ? call.createReply(value) : call.createErrorReply(error, u"made to fail"_s);
    if (heldCall == call.member()) {
        m_held.append(reply);
    } else {
        m_bus.send(reply);
    }
}
