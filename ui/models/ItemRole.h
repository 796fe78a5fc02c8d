// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QHash>
#include <QVariant>

struct MediaItem;

/// What the lists of items tell about each of them.
namespace ItemRole {

enum Role {
    ItemId = Qt::UserRole + 1,
    DisplayName,
    IsVideo,
    Rejected,
    Item,
};

[[nodiscard]] QHash<int, QByteArray> names();

/// The value of @p role for @p item; invalid for a role that is not one of ours.
[[nodiscard]] QVariant value(const MediaItem &item, bool rejected, int role);

} // namespace ItemRole
