// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QScreen;

/// The longest edge in pixels of images decoded for the whole screen: @p screen's height in points
/// times its scale factor, truncated; 2160 without a screen. The width plays no part.
[[nodiscard]] int screenMaxPixel(const QScreen *screen);
