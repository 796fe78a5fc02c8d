// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <filesystem>

/// One mount of the kernel's table.
struct Mount {
    std::filesystem::path mountPoint = {};
    quint64 device = 0;      ///< the file system's device number, as st_dev has it
    bool isReadOnly = false; ///< this mount, or the file system as a whole

    bool operator==(const Mount &) const = default;
};
