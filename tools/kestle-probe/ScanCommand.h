// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tools/kestle-probe/ExitStatus.h"

#include <QStringList>

/// scan CARD: the files in the order listed and the items in shooting order, paths relative to the
/// card, dates in seconds since 1970 or null.
[[nodiscard]] ExitStatus scanCommand(const QStringList &arguments);
