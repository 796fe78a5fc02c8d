// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/volumes/UDisksVolumes.h"

#include "platform/volumes/DiskMessages.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QPointer>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// D-Bus Specification, "Standard Interfaces" and "Message Bus Messages"; UDisks 2 reference manual.
const auto diskService = u"org.freedesktop.UDisks2"_s;
const auto diskRoot = u"/org/freedesktop/UDisks2"_s;
const auto objectManager = u"org.freedesktop.DBus.ObjectManager"_s;
const auto propertiesInterface = u"org.freedesktop.DBus.Properties"_s;
const auto busService = u"org.freedesktop.DBus"_s;
const auto busPath = u"/org/freedesktop/DBus"_s;
const auto localPath = u"/org/freedesktop/DBus/Local"_s;
const auto localInterface = u"org.freedesktop.DBus.Local"_s;

/// Mounting one card brings a burst of notices; one reading serves them all.
constexpr auto coalescing = 50ms;

/// A service that did not answer in time is asked again, but not pressed.
constexpr auto retryDelay = 5s;

bool isTimeout(const QDBusMessage &answer)
{
    return answer.errorName() == "org.freedesktop.DBus.Error.NoReply"_L1 ||
           answer.errorName() == "org.freedesktop.DBus.Error.Timeout"_L1 ||
           answer.errorName() == "org.freedesktop.DBus.Error.TimedOut"_L1;
}

} // namespace

std::unique_ptr<UDisksVolumes> UDisksVolumes::onSystemBus()
{
    return std::make_unique<UDisksVolumes>(QDBusConnection::systemBus());
}

UDisksVolumes::UDisksVolumes(const QDBusConnection &bus, MountReader readMounts)
    : m_bus(std::make_unique<QDBusConnection>(bus))
    , m_readMounts(std::move(readMounts))
{
    m_nextRead.setSingleShot(true);
    connect(&m_nextRead, &QTimer::timeout, this, &UDisksVolumes::read);
    if (m_bus->isConnected()) {
        listen();
        read();
    }
}

UDisksVolumes::~UDisksVolumes() = default;

QList<MountedVolume> UDisksVolumes::volumes() const
{
    return m_volumes;
}

void UDisksVolumes::listen()
{
    // No service name in these: with one, Qt would ask the bus for its owner and wait for the
    // answer. The path, or the interface as first argument, keeps other services' signals out, and
    // isFromService() judges the sender.
    m_bus->connect({}, diskRoot, objectManager, u"InterfacesAdded"_s, this,
                   SLOT(interfacesAdded(QDBusMessage)));
    m_bus->connect({}, diskRoot, objectManager, u"InterfacesRemoved"_s, this,
                   SLOT(interfacesRemoved(QDBusMessage)));
    for (const auto &interface :
         {u".Block"_s, u".Drive"_s, u".Filesystem"_s, u".Loop"_s, u".Partition"_s}) {
        m_bus->connect({}, {}, propertiesInterface, u"PropertiesChanged"_s,
                       {diskService + interface}, {}, this, SLOT(propertiesChanged(QDBusMessage)));
    }
    m_bus->connect(busService, busPath, busService, u"NameOwnerChanged"_s, {diskService}, {}, this,
                   SLOT(ownerChanged(QString, QString, QString)));
    m_bus->connect({}, localPath, localInterface, u"Disconnected"_s, this, SLOT(serviceLost()));
}

bool UDisksVolumes::isFromService(const QDBusMessage &notice) const
{
    return !m_owner || *m_owner == notice.service();
}

void UDisksVolumes::interfacesAdded(const QDBusMessage &notice)
{
    if (isFromService(notice)) {
        readAfter(coalescing);
    }
}

void UDisksVolumes::interfacesRemoved(const QDBusMessage &notice)
{
    if (!isFromService(notice)) {
        return;
    }
    if (const auto path = DiskMessages::objectWithoutFilesystem(notice)) {
        noteUnmounted(*path, {});
    }
    readAfter(coalescing);
}

void UDisksVolumes::propertiesChanged(const QDBusMessage &notice)
{
    if (!isFromService(notice)) {
        return;
    }
    const auto properties = DiskMessages::changedProperties(notice);
    if (properties && properties->contains(VolumeTree::mountPointsProperty)) {
        noteUnmounted(notice.path(), VolumeTree::mountPoints(*properties));
    }
    readAfter(coalescing);
}

void UDisksVolumes::ownerChanged(const QString &service, const QString &oldOwner,
                                 const QString &newOwner)
{
    if (service != diskService) {
        return;
    }
    if (newOwner.isEmpty()) {
        serviceLost();
        return;
    }
    if (!oldOwner.isEmpty()) {
        m_newestAnswer = m_readsStarted; // the old owner's answers count no more
    }
    m_owner = newOwner;
    readAfter(coalescing);
}

void UDisksVolumes::serviceLost()
{
    m_newestAnswer = m_readsStarted;
    m_owner = QString();
    m_nextRead.stop(); // a reading now would start the service again
    m_tree = {};
    m_unmounted.clear();
    if (!m_volumes.isEmpty()) {
        publish({});
    }
}

/// An exchange that ends with the same device and UUID at the same place shows only here.
void UDisksVolumes::noteUnmounted(const QString &objectPath,
                                  const std::vector<std::filesystem::path> &stillMounted)
{
    for (const auto &mountPoint : m_tree.mountPointsOf(objectPath)) {
        if (std::ranges::find(stillMounted, mountPoint) == stillMounted.end() &&
            std::ranges::find(m_unmounted, mountPoint) == m_unmounted.end()) {
            m_unmounted.push_back(mountPoint);
        }
    }
}

/// Never puts a reading off that is due earlier, so that a steady stream of notices cannot starve
/// it.
void UDisksVolumes::readAfter(std::chrono::milliseconds delay)
{
    if (!m_nextRead.isActive() || m_nextRead.remainingTimeAsDuration() > delay) {
        m_nextRead.start(delay);
    }
}

void UDisksVolumes::read()
{
    const auto number = ++m_readsStarted;
    const auto call = QDBusMessage::createMethodCall(diskService, diskRoot, objectManager,
                                                     u"GetManagedObjects"_s);
    auto *watcher = new QDBusPendingCallWatcher(m_bus->asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, number] {
        watcher->deleteLater();
        take(watcher->reply(), number);
    });
}

void UDisksVolumes::take(const QDBusMessage &answer, quint64 number)
{
    if (number <= m_newestAnswer) {
        return;
    }
    m_newestAnswer = number;
    auto tree = DiskMessages::tree(answer);
    if (!tree) {
        if (isTimeout(answer)) {
            readAfter(retryDelay);
        }
        return; // what is known stays, unless the owner goes
    }
    m_owner = answer.service();
    m_tree = *std::move(tree);
    apply(m_tree.mountedVolumes(m_readMounts()));
}

void UDisksVolumes::apply(const QList<MountedVolume> &now)
{
    auto withoutExchanged = now;
    withoutExchanged.removeIf([this](const MountedVolume &volume) { return isExchanged(volume); });
    m_unmounted.clear();

    const QPointer self = this;
    if (withoutExchanged.size() != now.size()) {
        publish(withoutExchanged);
    }
    if (self && (!m_hasAnswered || m_volumes != now)) {
        publish(now);
    }
}

void UDisksVolumes::publish(const QList<MountedVolume> &volumes)
{
    m_hasAnswered = true;
    m_volumes = volumes;
    Q_EMIT changed();
}

/// Whether @p now took the place of another volume, or of itself after it was gone.
bool UDisksVolumes::isExchanged(const MountedVolume &now) const
{
    const auto before = std::ranges::find(m_volumes, now.mountPoint, &MountedVolume::mountPoint);
    return before != m_volumes.end() &&
           (before->device != now.device || before->uuid != now.uuid ||
            std::ranges::find(m_unmounted, now.mountPoint) != m_unmounted.end());
}
