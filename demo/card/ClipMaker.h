// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/card/PlannedClip.h"

#include <QString>

#include <filesystem>

/// Makes a clip by the ffmpeg command, as cameras write it: what is coded is what the sensor saw,
/// and the container says how to turn it and when it was filmed.
namespace ClipMaker {

/// Writes @p clip into @p file. Empty when it worked, else the reason to tell the user; then there
/// is no file. Blocks.
[[nodiscard]] QString make(const std::filesystem::path &file, const PlannedClip &clip);

} // namespace ClipMaker
