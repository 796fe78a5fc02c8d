// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QDateTime>

#include <filesystem>

/// Files whose times are those of a shot, not of now. False when the file system says no.
namespace DatedFile {

[[nodiscard]] bool write(const std::filesystem::path &path, const QByteArray &bytes,
                         const QDateTime &when);

/// Gives a file that exists the time @p when.
[[nodiscard]] bool date(const std::filesystem::path &path, const QDateTime &when);

} // namespace DatedFile
