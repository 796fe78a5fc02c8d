// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tests/app/walk/WalkCard.h"

#include <QString>

#include <map>
#include <set>
#include <string>
#include <vector>

/// What a culling session should be.
struct ModelSession {
    struct Item {
        QString id = {};
        bool isVideo = false;
        std::vector<std::string> files = {}; ///< RAW first
        std::string shown = {};              ///< the file it is shown by
        int shownNumber = 0;                 ///< of that file
    };

    std::vector<Item> items = {};
    std::set<QString> rejected = {};
    qint64 index = 0;
    std::vector<QString> undoStack = {};

    /// What is on @p card, mounted at @p path, in the order in which it is shown.
    [[nodiscard]] static std::vector<Item> itemsOf(const WalkCard &card, const std::string &path);

    [[nodiscard]] const Item &current() const { return items.at(static_cast<size_t>(index)); }

    [[nodiscard]] qint64 count() const { return static_cast<qint64>(items.size()); }

    [[nodiscard]] qint64 rejectCount() const { return static_cast<qint64>(rejected.size()); }

    [[nodiscard]] std::vector<Item> rejects() const;
    /// True when it is rejected now.
    bool toggle(const QString &id);
    /// True when there was something to be taken back.
    bool undo();
    [[nodiscard]] QString inventoryHash() const;
};
