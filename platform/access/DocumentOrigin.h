// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <filesystem>
#include <optional>

/// Where the desktop has the folder that the documents portal shows at @p document (extended
/// attribute "user.document-portal.host-path"); an empty path when it is nowhere any more. Absent
/// when the portal does not tell, as before xdg-desktop-portal 1.19. Blocks on the folder.
[[nodiscard]] std::optional<std::filesystem::path>
documentOrigin(const std::filesystem::path &document);
