// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/metadata/ImageMetadata.h"

#include <QFuture>
#include <QHash>
#include <QList>

#include <filesystem>
#include <stop_token>
#include <vector>

class AppState;
struct MediaItem;

/// What screens read from the card besides pictures, off the main thread.
///
/// All of it runs on one pool that belongs to the controller and is waited for at its end: a screen
/// that goes away never waits for a slow card. A read that was stopped before it began brings
/// nothing.
namespace CardReads {

[[nodiscard]] QFuture<std::optional<ImageMetadata>>
metadata(AppState &appState, const std::filesystem::path &url, std::stop_token stop);

/// Bytes that the files of each of @p items occupy, by id; a size that cannot be read counts as 0.
[[nodiscard]] QFuture<QHash<QString, qint64>>
sizes(AppState &appState, const QList<MediaItem> &items, std::stop_token stop);

} // namespace CardReads
