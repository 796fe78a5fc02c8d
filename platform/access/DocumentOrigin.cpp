// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/access/DocumentOrigin.h"

#include <sys/xattr.h>

#include <climits>
#include <string>

std::optional<std::filesystem::path> documentOrigin(const std::filesystem::path &document)
{
    std::string origin(PATH_MAX, '\0');
    const auto length = ::getxattr(document.c_str(), "user.document-portal.host-path",
                                   origin.data(), origin.size());
    if (length <= 0) {
        return std::nullopt;
    }
    origin.resize(static_cast<size_t>(length));
    origin.resize(origin.find_last_not_of('\0') + 1); // it may be stored as a C string
    return origin.starts_with('/') ? std::optional(std::filesystem::path(origin)) : std::nullopt;
}
