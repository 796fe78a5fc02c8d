// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/MountTable.h"
#include "platform/volumes/MountedVolumes.h"
#include "platform/volumes/VolumeTree.h"

#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QDBusConnection;
class QDBusMessage;

/// The mounted volumes as UDisks 2 tells them over D-Bus. Every notice of the service leads to one
/// coalesced, asynchronous reading of its whole object tree; while there is no service there are
/// no volumes. Lives on the main thread and never waits for the bus.
class UDisksVolumes final : public MountedVolumes {
    Q_OBJECT

public:
    using MountReader = std::function<QList<Mount>()>;

    /// The volumes of this system. Opening the system bus waits for its greeting, once.
    [[nodiscard]] static std::unique_ptr<UDisksVolumes> onSystemBus();

    /// Listens on @p bus and asks for the first list, starting the service if the bus can do that.
    /// A bus that is not connected has no volumes.
    explicit UDisksVolumes(const QDBusConnection &bus,
                           MountReader readMounts = MountTable::current);
    ~UDisksVolumes() override;

    [[nodiscard]] QList<MountedVolume> volumes() const override;

private Q_SLOTS:
    void interfacesAdded(const QDBusMessage &notice);
    void interfacesRemoved(const QDBusMessage &notice);
    void propertiesChanged(const QDBusMessage &notice);
    void ownerChanged(const QString &service, const QString &oldOwner, const QString &newOwner);
    void serviceLost();

private:
    void listen();
    [[nodiscard]] bool isFromService(const QDBusMessage &notice) const;
    void noteUnmounted(const QString &objectPath,
                       const std::vector<std::filesystem::path> &stillMounted);
    void readAfter(std::chrono::milliseconds delay);
    void read();
    void take(const QDBusMessage &answer, quint64 number);
    void apply(const QList<MountedVolume> &now);
    void publish(const QList<MountedVolume> &volumes);
    [[nodiscard]] bool isExchanged(const MountedVolume &now) const;

    std::unique_ptr<QDBusConnection> m_bus; ///< behind a pointer to keep D-Bus out of this header
    MountReader m_readMounts;
    QTimer m_nextRead;
    quint64 m_readsStarted = 0;
    quint64 m_newestAnswer = 0;     ///< the number of the read whose answer was taken last
    std::optional<QString> m_owner; ///< unique bus name; empty: no service; absent: not known yet
    bool m_hasAnswered = false;
    VolumeTree m_tree;
    QList<MountedVolume> m_volumes;
    std::vector<std::filesystem::path> m_unmounted; ///< by notices since the newest answer
};
