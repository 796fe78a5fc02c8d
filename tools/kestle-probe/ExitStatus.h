// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// How the program ends.
enum ExitStatus {
    Success = 0,
    /// What was asked for could not be done; the reason is one line on standard error.
    Failure = 1,
    /// The arguments make no sense; the usage is on standard error.
    BadUsage = 2,
};
