// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/access/Sandbox.h"

#include <system_error>

bool isSandboxed(const QByteArray &snap, const std::filesystem::path &flatpakInfo)
{
    std::error_code error;
    return !snap.isEmpty() || std::filesystem::exists(flatpakInfo, error);
}
