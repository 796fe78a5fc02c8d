// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <filesystem>
#include <functional>

/// A walk over the files of a folder that is held open.
namespace FolderWalk {

/// False ends the walk.
using Visit = std::function<bool(const std::filesystem::path &path)>;

/// Visits the regular files below @p folder at any depth: depth first, each folder's entries in
/// byte order of their names. Hidden entries (leading dot), the inside of package folders, links,
/// other mounts and whatever cannot be read are left out. Blocks.
///
/// The paths begin with @p shown, the folder's own; where that is empty, they are relative to it.
void regularFiles(int folder, const std::filesystem::path &shown, const Visit &visit);

} // namespace FolderWalk
