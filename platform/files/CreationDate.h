// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDateTime>

#include <filesystem>
#include <optional>

/// When the file at @p path was created, in UTC with milliseconds: the birth time of statx(2),
/// links followed. Absent where the file system keeps none (exFAT through FUSE) or the file is
/// gone; never the modification time. Blocks; safe from any thread.
[[nodiscard]] std::optional<QDateTime> creationDate(const std::filesystem::path &path);
