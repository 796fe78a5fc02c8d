// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QLocale>
#include <QString>

/// @p bytes as desktop file managers write sizes: decimal units, "Zero KB", "1 byte", whole KB, MB
/// with one decimal, larger units with two; trailing zeros dropped, the decimal sign of @p locale.
[[nodiscard]] QString byteCountText(qint64 bytes, const QLocale &locale = QLocale());
