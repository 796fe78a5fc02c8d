// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tools/kestle-probe/ExitStatus.h"

#include <QStringList>

/// decode [--max-pixel N] FILE [OUT.png]: decodes the picture, and writes it where OUT says so.
[[nodiscard]] ExitStatus decodeCommand(const QStringList &arguments);

/// thumbnail FILE [OUT.png]: the same at 256 pixels.
[[nodiscard]] ExitStatus thumbnailCommand(const QStringList &arguments);
