// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QChar>

/// The lower-case Latin letter that a key stands for: by its name @p key (Qt::Key), or, on a layout
/// with letters of another script, by its place @p scanCode (evdev's code plus 8, as X11 and
/// Wayland give it). Null for a key that is no letter.
[[nodiscard]] QChar latinKey(int key, quint32 scanCode);
