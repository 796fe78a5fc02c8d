// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// Loads libmpv, which otherwise happens when the first of its functions is called. False when it
/// cannot be had; its functions then fail. Blocks; safe from several threads.
bool loadMpv();
