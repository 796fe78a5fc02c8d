// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tools/kestle-probe/InventoryCommand.h"

#include "core/store/SessionStore.h"
#include "tools/kestle-probe/ScannedCard.h"

#include <cstdio>

ExitStatus inventoryCommand(const QStringList &arguments)
{
    if (arguments.size() != 1) {
        return BadUsage;
    }
    const auto items = scannedCard(arguments.first().toStdString());
    std::printf("%s\n", qPrintable(SessionStore::inventoryHash(items)));
    return Success;
}
