// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/model/MediaItem.h"

#include <QSet>

/// Groups the files of a card into items. Looks only at names; opens no file.
namespace Pairing {

/// Upper-case extensions, without the dot.
[[nodiscard]] const QSet<QString> &rawExtensions();
[[nodiscard]] const QSet<QString> &previewExtensions();
[[nodiscard]] const QSet<QString> &videoExtensions();

/// The upper-case extension of @p file, without the dot; empty if it has none.
[[nodiscard]] QString extensionOf(const std::filesystem::path &file);

/// One item per shot, sorted by id, without capture dates. The order of @p files decides only
/// which of several files for one place keeps the plain id. Pure.
[[nodiscard]] QList<MediaItem> pair(const std::vector<std::filesystem::path> &files);

} // namespace Pairing
