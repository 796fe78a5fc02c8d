// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// Keeps FFmpeg's libraries from writing on the terminal, for the whole program. To be called
/// before anything else of them; safe from several threads.
void silenceLibav();
