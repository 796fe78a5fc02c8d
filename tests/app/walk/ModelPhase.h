// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// What the controller should be doing.
struct ModelPhase {
    enum class Kind {
        WaitingForCard,
        NeedsAccess,
        Scanning,
        NoMedia,
        CardReady,
        Culling,
        Review,
        Deleting,
        Summary,
    };

    Kind kind = Kind::WaitingForCard;
    bool resumable = false;
    qint64 done = 0; ///< files; in the summary, those deleted
    qint64 total = 0;
    qint64 failed = 0;
    qint64 kept = 0;

    [[nodiscard]] QString text() const;
};
