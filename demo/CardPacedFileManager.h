// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/PosixFileManager.h"

/// Lists and removes no faster than a slow card, so that the screens of that time can be seen on a
/// card that is a folder.
class CardPacedFileManager final : public PosixFileManager {
public:
    [[nodiscard]] std::vector<std::filesystem::path>
    regularFilesBelow(const std::filesystem::path &folder) const override;

    [[nodiscard]] std::unique_ptr<HeldCard> hold(const std::filesystem::path &root,
                                                 std::error_code &error) const override;
};
