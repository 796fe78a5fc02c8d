// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <optional>
#include <string_view>

/// The exact value of a number as JSON writes it, "3", "3.0" or "30e-1", where it is an integer of
/// 64 bits; absent otherwise. A double would round long numbers to an integer that is not there.
/// Any character may stand for the decimal point.
[[nodiscard]] std::optional<qint64> integralNumber(std::string_view number);
