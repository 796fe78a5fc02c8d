// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/Mount.h"
#include "platform/volumes/MountedVolume.h"

#include <QList>
#include <QMap>
#include <QVariantMap>

#include <vector>

/// What the disk service tells of drives and block devices, as plain values: object paths are
/// QString, byte arrays QByteArray, lists of byte arrays QByteArrayList. A property that is missing
/// or of another type counts as not set. Names are those of the UDisks 2 D-Bus interface.
struct VolumeTree {
    /// Properties by interface.
    using Interfaces = QMap<QString, QVariantMap>;

    QMap<QString, Interfaces> objects = {}; ///< by object path

    /// The mounted file systems of block devices, each mount point an entry of its own, in the
    /// order of @p mounts, the kernel's; those that it does not hold come last. File systems
    /// without a block device (network, phones) are not among them, nor what the service wants
    /// hidden, nor the images of installed snap packages. Of several at one mount point only the
    /// one on top counts.
    [[nodiscard]] QList<MountedVolume> mountedVolumes(const QList<Mount> &mounts) const;

    /// The interface of objects that hold a mountable file system.
    static inline const QString filesystemInterface =
        QStringLiteral("org.freedesktop.UDisks2.Filesystem");

    /// The property of a file system that holds its mount points.
    static inline const QString mountPointsProperty = QStringLiteral("MountPoints");

    /// The mount points among the @p properties of a file system.
    [[nodiscard]] static std::vector<std::filesystem::path>
    mountPoints(const QVariantMap &properties);

    /// Where the file system of the object at @p objectPath is mounted.
    [[nodiscard]] std::vector<std::filesystem::path> mountPointsOf(const QString &objectPath) const;
};
