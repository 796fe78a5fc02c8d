// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// A file that a deletion left on the card, as it is told to the user.
struct FailedFile {
    QString name; ///< its place on the card
    QString reason;

    bool operator==(const FailedFile &) const = default;
};
