// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/VolumeTree.h"

#include <QByteArrayList>

/// Builds what the disk service would tell of made-up hardware. Names are the last component of
/// the object paths.
class HandMadeTree {
public:
    struct Medium {
        bool removable = false;
        bool mediaRemovable = false;
        bool ejectable = false;
    };

    VolumeTree tree;

    static QString interface(const char *name)
    {
        return QStringLiteral("org.freedesktop.UDisks2.") + QString::fromLatin1(name);
    }

    static QString drivePath(const QString &name)
    {
        return QStringLiteral("/org/freedesktop/UDisks2/drives/") + name;
    }

    static QString blockPath(const QString &name)
    {
        return QStringLiteral("/org/freedesktop/UDisks2/block_devices/") + name;
    }

    void addDrive(const QString &name, Medium medium)
    {
        tree.objects[drivePath(name)][interface("Drive")] = {
            {QStringLiteral("Removable"), medium.removable},
            {QStringLiteral("MediaRemovable"), medium.mediaRemovable},
            {QStringLiteral("Ejectable"), medium.ejectable}};
    }

    /// A block device of @p drive; "" for none. @p number makes its device number 8:number.
    void addBlock(const QString &name, const QString &drive, quint64 number = 0)
    {
        tree.objects[blockPath(name)][interface("Block")] = {
            {QStringLiteral("Drive"), drive.isEmpty() ? QStringLiteral("/") : drivePath(drive)},
            {QStringLiteral("Device"), QByteArray("/dev/" + name.toUtf8() + '\0')},
            {QStringLiteral("DeviceNumber"), number == 0 ? 0 : (quint64(8) << 8 | number)},
            {QStringLiteral("HintIgnore"), false},
            {QStringLiteral("ReadOnly"), false}};
    }

    void setBlockProperty(const QString &name, const char *property, const QVariant &value)
    {
        tree.objects[blockPath(name)][interface("Block")][QString::fromLatin1(property)] = value;
    }

    void setFilesystem(const QString &name, const QString &uuid, const QString &label,
                       const QByteArrayList &mountPoints)
    {
        setBlockProperty(name, "IdUUID", uuid);
        setBlockProperty(name, "IdLabel", label);
        setMountPoints(name, mountPoints);
    }

    void setMountPoints(const QString &name, const QByteArrayList &mountPoints)
    {
        QByteArrayList terminated;
        for (const auto &mountPoint : mountPoints) {
            terminated.append(mountPoint + '\0');
        }
        tree.objects[blockPath(name)][interface("Filesystem")] = {
            {QStringLiteral("MountPoints"), QVariant::fromValue(terminated)}};
    }

    void setPartitionOf(const QString &name, const QString &table)
    {
        tree.objects[blockPath(name)][interface("Partition")] = {
            {QStringLiteral("Table"), blockPath(table)}};
    }

    void setLoop(const QString &name)
    {
        tree.objects[blockPath(name)][interface("Loop")] = {{QStringLiteral("SetupByUID"), 0u}};
    }

    /// A card in a USB reader: whole disk, one partition, file system.
    void addCard(const QString &disk, const QString &uuid, const QString &label,
                 const QByteArrayList &mountPoints)
    {
        const auto partition = disk + QLatin1Char('1');
        addDrive(disk, {.removable = true, .mediaRemovable = true, .ejectable = true});
        addBlock(disk, disk);
        addBlock(partition, disk);
        setPartitionOf(partition, disk);
        setFilesystem(partition, uuid, label, mountPoints);
    }
};
