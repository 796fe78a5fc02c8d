// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <filesystem>

/// Tells whether a file or folder was read, by its access time.
namespace AccessTime {

/// Sets it so far back that every kind of mounting but "noatime" changes it at the next reading.
void makeOld(const std::filesystem::path &path);
[[nodiscard]] bool isOld(const std::filesystem::path &path);

/// Whether reading changes it at all here; reads @p path to see.
[[nodiscard]] bool changesOnReading(const std::filesystem::path &path);

} // namespace AccessTime
