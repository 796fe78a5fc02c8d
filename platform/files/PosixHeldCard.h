// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/FatProtection.h"
#include "platform/files/FileDescriptor.h"
#include "platform/files/FolderIdentity.h"
#include "platform/files/HeldCard.h"
#include "platform/files/LifeWitness.h"

#include <map>

/// A card held by descriptors of the running system.
class PosixHeldCard : public HeldCard {
public:
    /// Opens the folder @p root to be held; not open, with @p error, on failure.
    [[nodiscard]] static FileDescriptor openRoot(const std::filesystem::path &root,
                                                 std::error_code &error);

    /// @p root is open.
    explicit PosixHeldCard(FileDescriptor root);

    [[nodiscard]] bool isAt(const std::filesystem::path &path) const override;
    [[nodiscard]] std::shared_ptr<const CardMark> mark() const override;
    [[nodiscard]] bool bears(const CardMark &mark) const override;
    [[nodiscard]] Lookup lookUp(const std::filesystem::path &path) const override;
    void chooseWitness(const PathBytes &doomed) override;
    [[nodiscard]] std::error_code proveAlive() override;
    [[nodiscard]] std::error_code openFolder(const std::filesystem::path &folder) override;
    [[nodiscard]] std::error_code remove(const std::filesystem::path &folder,
                                         const std::filesystem::path &name) override;
    [[nodiscard]] std::error_code syncFolder(const std::filesystem::path &folder) override;
    void closeFolders() override;
    [[nodiscard]] std::error_code syncAll() override;

private:
    struct Folder {
        FileDescriptor descriptor;
        FolderIdentity identity;
    };

    FileDescriptor m_root;
    std::optional<FolderIdentity> m_identity;
    FatProtection m_protection;
    std::optional<LifeWitness> m_witness;
    std::error_code m_death;
    std::map<std::filesystem::path, Folder> m_folders;
};
