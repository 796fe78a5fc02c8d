// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/access/DocumentOrigin.h"

#include <sys/xattr.h>

#include <linux/limits.h>
#include <string>

static constexpr auto attribute = "user.document-portal.host-path";

/// The portal lists the attribute also of a folder that is gone, and then has no value for it.
static bool isListed(const std::filesystem::path &document)
{
    std::string names(XATTR_LIST_MAX, '\0');
    const auto length = ::listxattr(document.c_str(), names.data(), names.size());
    names.resize(length > 0 ? static_cast<size_t>(length) : 0);
    return ('\0' + names).find('\0' + std::string(attribute) + '\0') != std::string::npos;
}

std::optional<std::filesystem::path> documentOrigin(const std::filesystem::path &document)
{
    std::string origin(PATH_MAX, '\0');
    const auto length = ::getxattr(document.c_str(), attribute, origin.data(), origin.size());
    if (length < 0) {
        return isListed(document) ? std::optional(std::filesystem::path()) : std::nullopt;
    }
    origin.resize(static_cast<size_t>(length));
    origin.resize(origin.find_last_not_of('\0') + 1); // it may be stored as a C string
    return origin;
}
