// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/card/DeleteResult.h"

#include <QList>
#include <QString>

/// A file that a deletion left on the card, as it is told to the user.
struct FailedFile {
    QString name; ///< its place on the card
    QString reason;

    bool operator==(const FailedFile &) const = default;
};

/// Those of @p result, in its order; @p root is where the files of the card are.
[[nodiscard]] QList<FailedFile> failedFiles(const DeleteResult &result,
                                            const std::filesystem::path &root);
