// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/updates/PublicKey.h"

#include <QUrl>

#include <optional>

/// Where a build of Kestle learns of newer versions, and whose word counts.
struct UpdateFeed {
    /// What the build options say; nothing in a build that the system's software centre updates.
    [[nodiscard]] static std::optional<UpdateFeed> builtIn();

    QUrl address; ///< https
    PublicKey key;
    bool mustBeSigned = true; ///< the feed itself, not only the downloads
};
