// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// Keeps FFmpeg's libraries from taking more memory at once than the largest picture of a camera
/// needs, for the whole program: what is damaged or made to harm is refused instead. Safe from
/// several threads.
void limitLibav();
