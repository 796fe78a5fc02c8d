// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/model/MediaItem.h"

#include <QList>
#include <QSet>

/// The rejects among @p items whose id a kept file would come under once they are deleted: a kept
/// file of the same name that is there as a duplicate takes the place of the one that is gone. A
/// decision that is remembered by such an id must not outlive the deletion.
[[nodiscard]] QSet<QString> rejectsWithKeptHeirs(const QList<MediaItem> &items,
                                                 const QSet<QString> &rejectedIDs);
