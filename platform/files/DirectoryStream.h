// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <dirent.h>

#include <memory>

struct DirectoryCloser {
    void operator()(DIR *directory) const { ::closedir(directory); }
};

/// An open folder's entries; closed with its owner.
using DirectoryStream = std::unique_ptr<DIR, DirectoryCloser>;
