// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/models/ItemRole.h"

#include "core/model/MediaItem.h"

QHash<int, QByteArray> ItemRole::names()
{
    return {
        {ItemId, "itemId"},   {DisplayName, "displayName"},
        {IsVideo, "isVideo"}, {Rejected, "rejected"},
        {Item, "item"},
    };
}

QVariant ItemRole::value(const MediaItem &item, bool rejected, int role)
{
    switch (role) {
    case ItemId:
        return item.id;
    case DisplayName:
        return item.displayName();
    case IsVideo:
        return item.kind == MediaKind::video;
    case Rejected:
        return rejected;
    case Item:
        return QVariant::fromValue(item);
    default:
        return {};
    }
}
