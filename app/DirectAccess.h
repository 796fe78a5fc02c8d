// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/CardAccess.h"

#include <memory>

class FileManager;
class UserDefaults;

/// Access without a sandbox: what can be listed is granted. The stored grant is a
/// DirectBookmark under "cardBookmark." and the volume's UUID.
class DirectAccess final : public CardAccess {
public:
    /// @p defaults outlives the access.
    DirectAccess(std::shared_ptr<const FileManager> fileManager, UserDefaults &defaults);

    [[nodiscard]] bool isReadable(const std::filesystem::path &url) const override;
    [[nodiscard]] std::optional<std::filesystem::path>
    resolveBookmark(const QString &volumeUUID) override;
    void saveBookmark(const std::filesystem::path &url, const QString &volumeUUID) override;
    /// The card itself: a grant of another folder may only have made it readable.
    [[nodiscard]] std::filesystem::path root(const std::filesystem::path &volumeURL,
                                             const std::filesystem::path &granted) const override;
    void stopAccess(const std::filesystem::path &url) override;

    /// Under which the grant of a volume is stored.
    [[nodiscard]] static QString bookmarkKey(const QString &volumeUUID);

private:
    std::shared_ptr<const FileManager> m_fileManager;
    UserDefaults &m_defaults;
};
