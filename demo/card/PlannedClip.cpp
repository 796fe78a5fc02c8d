// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/PlannedClip.h"

#include "demo/scenes/Scenes.h"

std::vector<PlannedClip> PlannedClip::all(uint32_t seed)
{
    const auto at = [](int hour, int minute) {
        return QDateTime(QDate(2025, 10, 13), QTime(hour, minute, 33), Qt::UTC);
    };
    return {
        {.scene = Scenes::winterTree,
         .moment = 1,
         .place = seed,
         .development = {.exposure = 1.2F, .grain = 0.4F},
         .weather = Weather::Snow,
         .frames = 60,
         .captured = at(16, 48)},
        {.scene = Scenes::sea,
         .moment = 2,
         .place = seed * 100 + 4,
         .development = {.saturation = 1.1F, .grain = 0.3F},
         .pan = 6,
         .hasSound = true,
         .captured = at(18, 2)},
        {.scene = Scenes::rainStreet,
         .place = seed * 100 + 6,
         .development = {.contrast = 1.1F, .grain = 0.4F},
         .weather = Weather::Rain,
         .upright = true,
         .captured = at(20, 24)},
        {.scene = Scenes::aurora,
         .moment = 3,
         .place = seed * 100 + 31,
         .development = {.saturation = 1.1F, .grain = 0.4F},
         .pan = 12,
         .codec = Codec::Hevc,
         .extension = "MP4",
         .captured = at(23, 51)},
    };
}
