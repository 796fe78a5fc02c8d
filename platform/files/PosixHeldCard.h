// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/FatProtection.h"
#include "platform/files/FileDescriptor.h"
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
    /// What tells one folder from every other of the running system.
    struct Identity {
        quint64 device = 0;
        quint64 inode = 0;
        quint64 mount = 0; ///< 0 where the kernel does not tell (before Linux 5.8)

        bool operator==(const Identity &) const = default;
    };

    struct Folder {
        FileDescriptor descriptor;
        Identity identity;
    };

    [[nodiscard]] static std::optional<Identity> identityOf(int descriptor, const char *path,
                                                            int flags);

    FileDescriptor m_root;
    std::optional<Identity> m_identity;
    FatProtection m_protection;
    std::optional<LifeWitness> m_witness;
    std::error_code m_death;
    std::map<std::filesystem::path, Folder> m_folders;
};
