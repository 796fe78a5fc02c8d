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
    /// There is nobody to ask: a folder that has become readable is granted.
    [[nodiscard]] std::optional<std::filesystem::path>
    requestAccess(const std::filesystem::path &directory, const QString &name) override;
    void stopAccess(const std::filesystem::path &url) override;

private:
    std::shared_ptr<const FileManager> m_fileManager;
    UserDefaults &m_defaults;
};
