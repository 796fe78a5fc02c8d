// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tools/kestle-probe/ExitStatus.h"

#include <QStringList>

/// inventory CARD: the hash of the card's items by which a session knows what was on it, 64
/// hexadecimal digits.
[[nodiscard]] ExitStatus inventoryCommand(const QStringList &arguments);
