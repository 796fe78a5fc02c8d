// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

enum class NotesFormat { Plain, Html };

/// What a version's notes say, as text to be shown plainly: no markup, no scripts or styles, no
/// characters that are not to be seen, and at most 20,000 characters.
[[nodiscard]] QString plainNotes(const QString &notes, NotesFormat format);

/// @p text as one such line.
[[nodiscard]] QString plainLine(const QString &text);
