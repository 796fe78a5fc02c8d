// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/VolumeTree.h"

#include <optional>

class QDBusMessage;

/// The disk service's D-Bus messages as plain values; absent when a message is of another shape.
/// Safe from any thread.
namespace DiskMessages {

/// The answer to org.freedesktop.DBus.ObjectManager.GetManagedObjects, a{oa{sa{sv}}}.
[[nodiscard]] std::optional<VolumeTree> tree(const QDBusMessage &answer);

/// The object that lost its file system by org.freedesktop.DBus.ObjectManager.InterfacesRemoved,
/// oas; also absent when other interfaces went.
[[nodiscard]] std::optional<QString> objectWithoutFilesystem(const QDBusMessage &notice);

/// The changed values of org.freedesktop.DBus.Properties.PropertiesChanged, sa{sv}as.
[[nodiscard]] std::optional<QVariantMap> changedProperties(const QDBusMessage &notice);

} // namespace DiskMessages
