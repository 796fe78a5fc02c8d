// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tools/kestle-probe/ExitStatus.h"

#include <QStringList>

/// metadata FILE…: a JSON list with what the reader makes of each file; null where that is nothing.
[[nodiscard]] ExitStatus metadataCommand(const QStringList &arguments);
