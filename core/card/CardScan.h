// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/model/MediaItem.h"
#include "platform/files/CardMark.h"

#include <QList>

#include <memory>

/// What a scan found, and on which card.
struct CardScan {
    QList<MediaItem> items; ///< in shooting order
    /// What the card is known again by; null when it could not be held, and then it has no items.
    std::shared_ptr<const CardMark> mark;
};
