// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <optional>

/// The look that was set in a Fujifilm camera, as short texts for display.
struct FujiSettings {
    std::optional<QString> filmSimulation = {};
    std::optional<QString> dynamicRange = {};
    std::optional<QString> whiteBalanceShift = {};
    std::optional<QString> highlightTone = {};
    std::optional<QString> shadowTone = {};
    std::optional<QString> grain = {};
    std::optional<QString> colorChrome = {};
    std::optional<QString> colorChromeBlue = {};

    bool operator==(const FujiSettings &) const = default;
};
