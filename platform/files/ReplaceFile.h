// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

#include <filesystem>

/// Makes @p content the whole content of @p file, readable by this user alone, and waits until it
/// is on the disk. Whoever opens the file meanwhile, or after a crash, finds the old content or the
/// new one. Throws std::system_error when that fails; the old content is untouched then, unless it
/// was only the folder that could not be synced: the new one may be there already.
///
/// A temporary file stands in the same folder meanwhile, "name.XXXXXX.ext" for "name.ext", and
/// stays there only when the program is killed.
void replaceFile(const std::filesystem::path &file, const QByteArray &content);
