// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

#include <filesystem>
#include <optional>

/// The whole content of a regular file of at most @p limit bytes. Absent for a longer file, for
/// anything that is not a regular file, such as a folder or a FIFO, for which it never waits, and
/// after an error. A link is followed.
[[nodiscard]] std::optional<QByteArray> readFile(const std::filesystem::path &file, qint64 limit);
