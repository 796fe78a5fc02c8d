// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <filesystem>

/// Makes the folder @p path, and those above it that are missing, for this user alone, and waits
/// until they are on the disk. A folder that exists stays as it is. Throws std::system_error.
void makePrivateFolder(const std::filesystem::path &path);
