// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/model/MediaItem.h"

#include <QList>

#include <filesystem>

/// The items of the card at @p root in shooting order, scanned as the application does it.
[[nodiscard]] QList<MediaItem> scannedCard(const std::filesystem::path &root);
