// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMetaType>
#include <QString>

#include <optional>

/// Whether an item is a shot or a clip.
enum class MediaKind {
    photo,
    video,
};

/// "photo" or "video".
[[nodiscard]] QString rawValue(MediaKind kind);

/// The kind with that raw value; absent for any other text.
[[nodiscard]] std::optional<MediaKind> mediaKind(const QString &rawValue);
