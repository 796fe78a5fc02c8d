// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/media/MovieBoxes.h"

/// Where the samples of a track lie in a MOV or MP4 file (ISO 14496-12, 8.7).
namespace SamplePlaces {

/// How many of the first @p samples lie wholly in the file, up to the first that does not; all when
/// the tables do not say. @p tables are those of the track. Blocks while it reads.
[[nodiscard]] size_t countInside(MovieBoxes &movie, const MovieBoxes::Boxes &tables,
                                 size_t samples);

} // namespace SamplePlaces
