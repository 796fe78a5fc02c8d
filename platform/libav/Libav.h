// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// Loads FFmpeg's libraries, which otherwise happens when the first of their functions is called:
/// they bring a hundred more along and need some 50 ms, for which no start should wait. False when
/// they cannot be had; their functions then fail. Blocks; safe from several threads.
bool loadLibav();
