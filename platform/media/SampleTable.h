// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <optional>
#include <vector>

class MovieBoxes;

/// What the tables of a MOV or MP4 file say of its frames (ISO 14496-12, 8.6).
namespace SampleTable {

/// When the frames come, in seconds.
struct Frames {
    std::vector<double> times; ///< of those that are there, in no certain order
    std::optional<double> end; ///< of those, when others are missing behind them
};

/// Of the track that is shown. Nothing for other files, for those in fragments or put together from
/// several stretches, and for damaged or monstrous ones. Blocks while it reads.
[[nodiscard]] std::optional<Frames> frames(MovieBoxes &movie);

} // namespace SampleTable
