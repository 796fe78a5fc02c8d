// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/model/MediaKind.h"

using namespace Qt::StringLiterals;

QString rawValue(MediaKind kind)
{
    return kind == MediaKind::photo ? u"photo"_s : u"video"_s;
}

std::optional<MediaKind> mediaKind(const QString &rawValue)
{
    for (const auto kind : {MediaKind::photo, MediaKind::video}) {
        if (rawValue == ::rawValue(kind)) {
            return kind;
        }
    }
    return std::nullopt;
}
