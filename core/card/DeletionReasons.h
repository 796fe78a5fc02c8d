// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Why a file is not deleted, as far as it is not the system that says so.
namespace DeletionReasons {

[[nodiscard]] inline QString outsideCardVolume()
{
    return QStringLiteral("outside card volume");
}

/// A file that was already gone: it does not occupy the card any more.
[[nodiscard]] inline QString fileNotFound()
{
    return QStringLiteral("file not found");
}

[[nodiscard]] inline QString notARegularFile()
{
    return QStringLiteral("not a regular file");
}

} // namespace DeletionReasons
