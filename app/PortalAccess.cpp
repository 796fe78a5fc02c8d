// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/PortalAccess.h"

#include "platform/access/DocumentGrant.h"
#include "platform/access/DocumentOrigin.h"
#include "platform/files/FileManager.h"
#include "platform/settings/UserDefaults.h"

#include <QFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

PortalAccess::PortalAccess(std::shared_ptr<const FileManager> fileManager, UserDefaults &defaults,
                           std::filesystem::path documents)
    : m_fileManager(std::move(fileManager))
    , m_defaults(defaults)
    , m_direct(m_fileManager, defaults)
    , m_documents(std::move(documents))
{
}

bool PortalAccess::isReadable(const std::filesystem::path &url) const
{
    return m_fileManager->isListable(url);
}

std::optional<std::filesystem::path> PortalAccess::resolveBookmark(const QString &volumeUUID)
{
    const auto key = DirectAccess::bookmarkKey(volumeUUID);
    const auto stored = m_defaults.bytes(key);
    const auto grant = stored ? DocumentGrant::from(*stored) : std::nullopt;
    if (!grant) {
        return m_direct.resolveBookmark(volumeUUID);
    }
    if (isReadable(grant->path)) {
        return grant->path;
    }
    const auto renewed = grant->renewed(m_documents);
    if (renewed && renewed != grant && isReadable(renewed->path)) {
        m_defaults.replace(key, *stored, renewed->data());
        return renewed->path;
    }
    m_defaults.replace(key, *stored, std::nullopt); // another may have been granted meanwhile
    return std::nullopt;
}

void PortalAccess::saveBookmark(const std::filesystem::path &url, const QString &volumeUUID)
{
    if (const auto grant = DocumentGrant::ofPath(url)) {
        m_defaults.setBytes(DirectAccess::bookmarkKey(volumeUUID), grant->data());
    } else {
        m_direct.saveBookmark(url, volumeUUID);
    }
}

std::filesystem::path PortalAccess::root(const std::filesystem::path &volumeURL,
                                         const std::filesystem::path &granted) const
{
    const auto grant = DocumentGrant::ofPath(granted);
    const bool isWholeFolder =
        grant && granted.parent_path().filename() == grant->document.toStdString();
    // Another folder, or another card of the same UUID, must not be read and cleaned in its place.
    const bool isCard = isWholeFolder && granted.filename() == volumeURL.filename() &&
                        documentOrigin(granted).value_or(volumeURL) == volumeURL;
    return isCard ? granted : volumeURL;
}

void PortalAccess::stopAccess(const std::filesystem::path & /*url*/)
{
    // Nothing is held open.
}

std::filesystem::path PortalAccess::standardDocuments()
{
    const auto runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return std::filesystem::path(QFile::encodeName(runtime).toStdString()) / "doc";
}
