// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "FakeUDisks.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>

using namespace Qt::StringLiterals;

using WireTree = QMap<QDBusObjectPath, VolumeTree::Interfaces>;

static const auto service = u"org.freedesktop.UDisks2"_s;
static const auto root = u"/org/freedesktop/UDisks2"_s;
static const auto objectManager = u"org.freedesktop.DBus.ObjectManager"_s;

static QVariantMap onWire(QVariantMap properties)
{
    for (const auto &name : {u"Drive"_s, u"Table"_s}) {
        if (properties.contains(name)) {
            properties[name] =
                QVariant::fromValue(QDBusObjectPath(properties.value(name).toString()));
        }
    }
    // A type that nobody asks for, as the real service has several.
    properties[u"Configuration"_s] = QVariant::fromValue(QList<int>{1, 2});
    return properties;
}

static WireTree onWire(const VolumeTree &tree)
{
    WireTree wire;
    for (const auto &[path, interfaces] : tree.objects.asKeyValueRange()) {
        for (const auto &[name, properties] : interfaces.asKeyValueRange()) {
            wire[QDBusObjectPath(path)][name] = onWire(properties);
        }
    }
    return wire;
}

FakeUDisks::FakeUDisks(const QDBusConnection &bus)
    : m_bus(bus)
{
    qDBusRegisterMetaType<QByteArrayList>();
    qDBusRegisterMetaType<VolumeTree::Interfaces>();
    qDBusRegisterMetaType<WireTree>();
    m_bus.registerVirtualObject(root, this, QDBusConnection::SubPath);
}

bool FakeUDisks::start()
{
    return m_bus.registerService(service);
}

void FakeUDisks::stop()
{
    m_bus.unregisterService(service);
}

void FakeUDisks::insertCard(const QString &disk, const QString &uuid, const QString &label,
                            const QByteArrayList &mountPoints)
{
    made.addCard(disk, uuid, label, mountPoints);
    for (const auto &path : {HandMadeTree::drivePath(disk), HandMadeTree::blockPath(disk),
                             HandMadeTree::blockPath(disk + u'1')}) {
        auto notice = QDBusMessage::createSignal(root, objectManager, u"InterfacesAdded"_s);
        notice << QVariant::fromValue(QDBusObjectPath(path))
               << QVariant::fromValue(onWire(made.tree)[QDBusObjectPath(path)]);
        m_bus.send(notice);
    }
}

void FakeUDisks::removeCard(const QString &disk)
{
    for (const auto &path : {HandMadeTree::blockPath(disk + u'1'), HandMadeTree::blockPath(disk),
                             HandMadeTree::drivePath(disk)}) {
        auto notice = QDBusMessage::createSignal(root, objectManager, u"InterfacesRemoved"_s);
        notice << QVariant::fromValue(QDBusObjectPath(path))
               << QStringList(made.tree.objects.take(path).keys());
        m_bus.send(notice);
    }
}

void FakeUDisks::mount(const QString &block, const QByteArrayList &mountPoints)
{
    made.setMountPoints(block, mountPoints);
    const auto path = HandMadeTree::blockPath(block);
    sendPropertiesChanged(path, "Filesystem",
                          made.tree.objects[path][HandMadeTree::interface("Filesystem")]);
}

void FakeUDisks::rename(const QString &block, const QString &label)
{
    made.setBlockProperty(block, "IdLabel", label);
    sendPropertiesChanged(HandMadeTree::blockPath(block), "Block", {{u"IdLabel"_s, label}});
}

void FakeUDisks::sendPropertiesChanged(const QString &path, const char *interface,
                                       const QVariantMap &properties)
{
    auto notice = QDBusMessage::createSignal(path, u"org.freedesktop.DBus.Properties"_s,
                                             u"PropertiesChanged"_s);
    notice << HandMadeTree::interface(interface) << properties << QStringList();
    m_bus.send(notice);
}

void FakeUDisks::answerHeld()
{
    while (!m_held.isEmpty()) {
        m_bus.send(m_held.takeLast());
    }
}

QString FakeUDisks::introspect(const QString &) const
{
    return {};
}

bool FakeUDisks::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    if (message.path() != root || message.member() != u"GetManagedObjects"_s) {
        return false;
    }
    ++reads;
    m_held.append(error.isEmpty() ? message.createReply(QVariant::fromValue(onWire(made.tree)))
                                  : message.createErrorReply(error, u"made to fail"_s));
    if (!holdsAnswers) {
        answerHeld();
    }
    return true;
}
