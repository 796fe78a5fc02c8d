// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <filesystem>
#include <optional>

/// Files as the desktop names them (RFC 8089).
namespace FileUri {

/// The absolute path, byte for byte, that @p uri names on this machine, without a slash at its end;
/// absent when it is another kind of URI, another machine's, or none that a path can have.
[[nodiscard]] std::optional<std::filesystem::path> localPath(const QString &uri);

} // namespace FileUri
