// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

/// What is opened of a clip, whoever opens it.
namespace MediaLimits {

/// The demuxers by libavformat's names: what cameras write, and no lists that lead to other files.
inline constexpr auto formats = "mov,mp4,m4a,3gp,3g2,mj2,avi,mpegts";

inline constexpr int mostTracks = 32;

/// Of one frame. Nearly twice 8192 x 4320.
inline constexpr int64_t mostPixels = 64'000'000;

} // namespace MediaLimits
