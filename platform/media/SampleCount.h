// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class MovieBoxes;

/// How many samples a MOV or MP4 file claims to have. A few bytes may stand for thousands of
/// millions, and libavformat makes an entry for each before it has read any (24 bytes, and
/// minutes).
namespace SampleCount {

/// More than cameras write in many hours. False for other files. Blocks while it reads.
[[nodiscard]] bool isMonstrous(MovieBoxes &movie);

} // namespace SampleCount
