// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <filesystem>
#include <vector>

/// What became of a deletion run. Every location that was handed in is in exactly one of the
/// lists, each in the order in which they were handed in.
struct DeleteResult {
    struct Failure {
        std::filesystem::path url; ///< as it was handed in
        QString reason;

        bool operator==(const Failure &) const = default;
    };

    std::vector<std::filesystem::path> deleted;
    std::vector<Failure> failures;

    bool operator==(const DeleteResult &) const = default;
};
