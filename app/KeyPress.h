// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// One key going down, told by character for letters and by code for the other keys.
struct KeyPress {
    /// The codes of the key table, whatever the desktop's own are.
    enum Code : quint16 {
        None = 0,
        Return = 36,
        Tab = 48,
        Space = 49,
        Escape = 53,
        Left = 123,
        Right = 124,
        Down = 125,
        Up = 126,
    };

    QString chars = {}; ///< lower-case characters of the key without modifiers; may be empty
    quint16 keyCode = None;
    bool command = false; ///< the menus' modifier is held
};
