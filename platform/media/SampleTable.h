// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <optional>
#include <vector>

class MovieBoxes;

/// What the tables of a MOV or MP4 file say of its frames (ISO 14496-12, 8.6).
namespace SampleTable {

/// When the frames of the track that is shown come, in seconds, in no certain order. Nothing for
/// other files, for those in fragments or cut together from several stretches, and for damaged or
/// monstrous ones. Blocks while it reads.
[[nodiscard]] std::optional<std::vector<double>> frameTimes(MovieBoxes &movie);

} // namespace SampleTable
