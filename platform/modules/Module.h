// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// What the symbol @p table of Kestle's module @p name points to; null where the module is missing
/// or cannot be loaded. A module is a library of our own that stands for libraries of others which
/// are loaded only when one of them is needed, and then stay; its table holds their functions.
/// Blocks while they are loaded; safe from several threads.
[[nodiscard]] const void *moduleTable(const char *name, const char *table);
