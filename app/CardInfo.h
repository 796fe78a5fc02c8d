// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <filesystem>

class MountedVolumes;

/// A volume that could be a card.
struct CardInfo {
    std::filesystem::path volumeURL = {}; ///< the mount point
    QString volumeUUID = {};
    QString name = {};

    bool operator==(const CardInfo &) const = default;

    /// What @p volumes knows of the volume mounted at @p volumeURL. For a UUID or a name that is
    /// unknown or empty, the last component of the mount point stands in.
    [[nodiscard]] static CardInfo of(const MountedVolumes &volumes,
                                     const std::filesystem::path &volumeURL);
};

/// Whether both are the same volume at the same place, whatever its name is now.
[[nodiscard]] bool isSameVolume(const CardInfo &a, const CardInfo &b);
