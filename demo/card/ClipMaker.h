// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <filesystem>

/// Makes the sample card's clip: snow falling through the light of a lamp.
namespace ClipMaker {

/// Writes about four seconds of H.264 into @p file by the ffmpeg command. Empty when it worked,
/// else the reason to tell the user. Blocks.
[[nodiscard]] QString make(const std::filesystem::path &file, quint32 seed);

} // namespace ClipMaker
