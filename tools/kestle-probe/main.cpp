// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tools/kestle-probe/DecodeCommand.h"
#include "tools/kestle-probe/InventoryCommand.h"
#include "tools/kestle-probe/MetadataCommand.h"
#include "tools/kestle-probe/ScanCommand.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

struct Command {
    const char16_t *name;
    const char *usage;
    ExitStatus (*run)(const QStringList &arguments);
};

constexpr Command commands[] = {
    {u"scan", "scan CARD", scanCommand},
    {u"inventory", "inventory CARD", inventoryCommand},
    {u"metadata", "metadata FILE...", metadataCommand},
    {u"decode", "decode [--max-pixel N] FILE [OUT.png]", decodeCommand},
    {u"thumbnail", "thumbnail FILE [OUT.png]", thumbnailCommand},
};

ExitStatus run(const QStringList &arguments)
{
    for (const auto &command : commands) {
        if (arguments.value(0) == QStringView(command.name)) {
            return command.run(arguments.mid(1));
        }
    }
    return BadUsage;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const auto status = run(QCoreApplication::arguments().mid(1));
    if (status == BadUsage) {
        std::fputs("Usage:\n", stderr);
        for (const auto &command : commands) {
            std::fprintf(stderr, "  kestle-probe %s\n", command.usage);
        }
    }
    return status;
}
