// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <optional>

/// How a clip stands.
struct ClipReport {
    qint64 seek = 0;                     ///< number of the newest seek that has been done
    double time = 0;                     ///< where it is, in seconds
    std::optional<double> duration = {}; ///< in seconds, once it is known
    bool isAtEnd = false;
    bool hasFailed = false;

    bool operator==(const ClipReport &) const = default;
};
