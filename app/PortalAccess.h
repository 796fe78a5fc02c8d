// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/DirectAccess.h"

/// Access from inside a sandbox: what the user chose is seen through the documents portal. The
/// stored grant is then a DocumentGrant under "cardBookmark." and the volume's UUID. Whatever the
/// sandbox shows by itself is accessed directly.
class PortalAccess final : public CardAccess {
public:
    /// @p documents is where the documents portal is mounted. @p defaults outlives the access.
    PortalAccess(std::shared_ptr<const FileManager> fileManager, UserDefaults &defaults,
                 std::filesystem::path documents);

    [[nodiscard]] bool isReadable(const std::filesystem::path &url) const override;
    /// A document that is found under @p documents by now, and was elsewhere before, is stored
    /// anew.
    [[nodiscard]] std::optional<std::filesystem::path>
    resolveBookmark(const QString &volumeUUID) override;
    void saveBookmark(const std::filesystem::path &url, const QString &volumeUUID) override;
    /// The document, if it is the whole folder of that name; else the volume itself, which the
    /// sandbox does not show.
    [[nodiscard]] std::filesystem::path root(const std::filesystem::path &volumeURL,
                                             const std::filesystem::path &granted) const override;
    void stopAccess(const std::filesystem::path &url) override;

    /// Where the documents portal shows its folders to this user's programs.
    [[nodiscard]] static std::filesystem::path standardDocuments();

private:
    std::shared_ptr<const FileManager> m_fileManager;
    UserDefaults &m_defaults;
    DirectAccess m_direct;
    std::filesystem::path m_documents;
};
