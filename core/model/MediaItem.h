// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/model/MediaKind.h"

#include <QDateTime>
#include <QString>

#include <filesystem>
#include <optional>
#include <vector>

/// One shot on the card: the RAW file, the preview beside it, or both; or one video clip.
struct MediaItem {
    QString id = {}; ///< unique within one scan
    MediaKind kind = MediaKind::photo;
    std::optional<std::filesystem::path> rawURL = {};
    std::optional<std::filesystem::path> previewURL = {}; ///< the in-camera JPEG, HEIF or TIFF
    std::optional<std::filesystem::path> videoURL = {};
    std::optional<QDateTime> captureDate = {}; ///< UTC; absent until the scanner fills it

    /// The file to show and to read settings from: preview, else RAW, else video. An item without
    /// any stops the program.
    [[nodiscard]] const std::filesystem::path &displayURL() const;

    /// The file name of displayURL(), with extension.
    [[nodiscard]] QString displayName() const;

    /// The files that a deletion removes: raw, preview, video, those that exist.
    [[nodiscard]] std::vector<std::filesystem::path> allURLs() const;

    bool operator==(const MediaItem &) const = default;
};

Q_DECLARE_METATYPE(MediaItem)
