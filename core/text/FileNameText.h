// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <filesystem>
#include <string_view>

/// The text of a file name as part of a key. Different names always give different texts: a byte b
/// that is not part of valid UTF-8 becomes the private-use code point U+10FE00 + b. (A name that
/// holds such a code point itself is taken apart byte by byte in the same way.)
[[nodiscard]] QString keyText(std::string_view fileName);

/// The text of a file name as shown to the user: invalid UTF-8 as U+FFFD.
[[nodiscard]] QString displayText(const std::filesystem::path &fileName);
