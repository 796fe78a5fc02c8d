// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

/// What lies on a sample card, for whoever checks what became of it. Paths are relative to the
/// card's root, with slashes.
struct CardManifest {
    struct Item {
        QString id;
        QStringList files; ///< RAW first
        QString captured;  ///< ISO 8601; empty for a clip on a file system without birth times
    };

    QList<Item> items = {};      ///< in the order of walking through them
    QStringList companions = {}; ///< everything else
    QStringList notes = {};      ///< what could not be made, for the user

    [[nodiscard]] QJsonObject toJson() const;
};
