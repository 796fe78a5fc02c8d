// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/CardInfo.h"

#include "core/text/FileNameText.h"
#include "platform/volumes/MountedVolumes.h"

#include <algorithm>

static std::filesystem::path lastComponent(const std::filesystem::path &path)
{
    for (auto component = path.end(); component != path.begin();) {
        if (!(--component)->empty()) { // empty after a trailing separator
            return *component;
        }
    }
    return {};
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
    if (card.volumeUUID.isEmpty()) {
        card.volumeUUID = keyText(lastComponent(volumeURL).native()); // sessions are kept under it
    }
    if (card.name.isEmpty()) {
        card.name = displayText(lastComponent(volumeURL));
    }
    return card;
}

bool isSameVolume(const CardInfo &a, const CardInfo &b)
{
    return a.volumeURL == b.volumeURL && a.volumeUUID == b.volumeUUID;
}
