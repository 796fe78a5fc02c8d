// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <map>
#include <set>
#include <string>

/// A card in memory: what is on it, and how it misbehaves.
struct WalkCard {
    QString uuid = {};  ///< empty when the file system has none
    QString label = {}; ///< the same
    bool isFixed = false;
    bool hasDcim = true;
    bool isClosed = false; ///< not readable without a grant
    bool isReadOnly = false;
    bool syncFails = false;
    std::map<std::string, int> files = {}; ///< by path below DCIM, each with a number of its own
    std::set<std::string> stuckFiles = {}; ///< those that cannot be removed

    bool operator==(const WalkCard &) const = default;
};
