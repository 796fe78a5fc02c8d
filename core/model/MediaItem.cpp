// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/MediaItem.h"

#include "core/text/FileNameText.h"
#include "platform/checks/Precondition.h"

const std::filesystem::path &MediaItem::displayURL() const
{
    const auto &url = previewURL ? previewURL : rawURL ? rawURL : videoURL;
    precondition(url.has_value(), "a media item needs at least one file");
    return *url;
}

QString MediaItem::displayName() const
{
    return displayText(displayURL().filename());
}

std::vector<std::filesystem::path> MediaItem::allURLs() const
{
    std::vector<std::filesystem::path> urls;
    for (const auto *url : {&rawURL, &previewURL, &videoURL}) {
        if (*url) {
            urls.push_back(**url);
        }
    }
    return urls;
}
