// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <string>

/// What a card should be known as.
struct ModelCard {
    std::string path = {};
    QString uuid = {};
    QString name = {};

    /// Whatever its name is.
    [[nodiscard]] bool isSame(const ModelCard &other) const
    {
        return path == other.path && uuid == other.uuid;
    }

    bool operator==(const ModelCard &) const = default;
};
