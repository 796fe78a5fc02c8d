// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/DirectAccess.h"

#include "app/DirectBookmark.h"
#include "platform/files/FileManager.h"
#include "platform/settings/UserDefaults.h"

using namespace Qt::StringLiterals;

QString DirectAccess::bookmarkKey(const QString &volumeUUID)
{
    return u"cardBookmark."_s + volumeUUID;
}

DirectAccess::DirectAccess(std::shared_ptr<const FileManager> fileManager, UserDefaults &defaults)
    : m_fileManager(std::move(fileManager))
    , m_defaults(defaults)
{
}

bool DirectAccess::isReadable(const std::filesystem::path &url) const
{
    return m_fileManager->isListable(url);
}

std::optional<std::filesystem::path> DirectAccess::resolveBookmark(const QString &volumeUUID)
{
    const auto stored = m_defaults.bytes(bookmarkKey(volumeUUID));
    if (!stored) {
        return std::nullopt;
    }
    const auto bookmark = DirectBookmark::from(*stored);
    if (!bookmark || bookmark->volumeUUID != volumeUUID || !isReadable(bookmark->url)) {
        // The folder may have hung while another was granted.
        m_defaults.replace(bookmarkKey(volumeUUID), *stored, std::nullopt);
        return std::nullopt;
    }
    return bookmark->url;
}

void DirectAccess::saveBookmark(const std::filesystem::path &url, const QString &volumeUUID)
{
    if (url.is_absolute()) {
        m_defaults.setBytes(bookmarkKey(volumeUUID), DirectBookmark{url, volumeUUID}.data());
    }
}

std::filesystem::path DirectAccess::root(const std::filesystem::path &volumeURL,
                                         const std::filesystem::path & /*granted*/) const
{
    return volumeURL;
}

void DirectAccess::stopAccess(const std::filesystem::path & /*url*/)
{
    // Nothing is held open.
}
