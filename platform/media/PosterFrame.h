// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>

#include <filesystem>

/// The longest edge of a clip's picture, in pixels.
constexpr int posterPixel = 256;

/// The frame of the clip at @p path at time zero, turned as its display matrix says, with square
/// pixels, Format_RGB32; it fits a square of @p maxPixel pixels and is never enlarged. Null on any
/// error: no clip, no picture in it, a format that cameras do not write, or more than 5 seconds of
/// work. Blocks; safe from several threads; prints nothing and opens nothing but the file.
[[nodiscard]] QImage posterFrame(const std::filesystem::path &path, int maxPixel = posterPixel);
