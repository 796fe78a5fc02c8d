// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/FileDescriptor.h"

#include <filesystem>

/// Opens @p relative beneath the folder @p root with the flags of open(2): through no link, on no
/// other mount, never outside. An empty path is the folder itself. Not open on failure, with the
/// reason in errno.
[[nodiscard]] FileDescriptor openBeneath(int root, const std::filesystem::path &relative,
                                         int flags);

/// The same for reading, without touching the access time where that is allowed.
[[nodiscard]] FileDescriptor openBeneathForReading(int root, const std::filesystem::path &relative,
                                                   int flags);
