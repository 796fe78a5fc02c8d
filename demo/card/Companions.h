// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/card/CardManifest.h"

#include <QDateTime>

#include <filesystem>

/// The files on a sample card that are no pictures of their own: a computer's traces, notes, a
/// print order.
namespace Companions {

/// Writes them below @p root and into @p manifest. False when a file cannot be written.
[[nodiscard]] bool add(const std::filesystem::path &root, const QDateTime &when,
                       CardManifest &manifest);

} // namespace Companions
