// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

/// What a clip is to do.
struct ClipWish {
    bool plays = false;
    qint64 seek = 0;   ///< number of the newest seek
    double seekTo = 0; ///< in seconds

    bool operator==(const ClipWish &) const = default;
};
