// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

/// Stops the program with @p message when @p holds is false, in every build. For broken invariants
/// of our own making only; what a user or a card can cause has an answer of its own.
inline void precondition(bool holds, const char *message)
{
    if (!holds) [[unlikely]] {
        qFatal("%s", message);
    }
}
