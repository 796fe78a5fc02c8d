// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/FileManager.h"

/// The file manager of the running system.
class PosixFileManager : public FileManager {
public:
    [[nodiscard]] std::vector<std::filesystem::path>
    regularFilesBelow(const std::filesystem::path &folder) const override;
    [[nodiscard]] std::optional<EntryKind> kindOf(const std::filesystem::path &path) const override;
    [[nodiscard]] bool isListable(const std::filesystem::path &folder) const override;
    [[nodiscard]] std::filesystem::path
    resolvingSymlinks(const std::filesystem::path &path) const override;
    [[nodiscard]] bool isLink(const std::filesystem::path &path) const override;
    [[nodiscard]] std::optional<qint64> fileSize(const std::filesystem::path &path) const override;
    [[nodiscard]] bool isReadOnly(const std::filesystem::path &folder) const override;
    [[nodiscard]] std::unique_ptr<HeldCard> hold(const std::filesystem::path &root,
                                                 std::error_code &error) const override;
};
