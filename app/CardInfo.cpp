// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/CardInfo.h"

#include "core/text/FileNameText.h"
#include "platform/volumes/MountedVolumes.h"

#include <algorithm>

static std::filesystem::path lastComponent(const std::filesystem::path &path)
{
    return path.has_filename() ? path.filename() : path.parent_path().filename();
}

CardInfo CardInfo::of(const MountedVolumes &volumes, const std::filesystem::path &volumeURL)
{
    CardInfo card{volumeURL, {}, {}};
    const auto known = volumes.volumes();
    const auto volume = std::ranges::find(known, volumeURL, &MountedVolume::mountPoint);
    if (volume != known.end()) {
        card.volumeUUID = volume->uuid;
        card.name = volume->label;
    }
    const auto fallback = displayText(lastComponent(volumeURL));
    for (auto *text : {&card.volumeUUID, &card.name}) {
        if (text->isEmpty()) {
            *text = fallback;
        }
    }
    return card;
}
