// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/media/PictureTurn.h"

class MovieBoxes;

/// The display matrix of a MOV or MP4 file.
namespace TrackMatrix {

/// Of the video track that is shown, with that of the whole film (ISO 14496-12, 8.2.2 and 8.3.2);
/// none for other files. Blocks while it reads.
[[nodiscard]] PictureTurn turn(MovieBoxes &movie);

} // namespace TrackMatrix
