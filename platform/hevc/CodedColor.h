// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// What coded pictures say of their colours, in the numbers of ITU-T H.273. 2 is "unspecified".
struct CodedColor {
    static constexpr int unspecified = 2;

    int primaries = unspecified;
    int transfer = unspecified;
    int matrix = unspecified;
    /// Whether black is 0, and not 16 of 255.
    bool fullRange = false;

    bool operator==(const CodedColor &) const = default;
};
