// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/modules/Module.h"

#include <dlfcn.h>

const void *moduleTable(const char *name, const char *table)
{
    // The executable's own search path leads to it, beside its place in the build or installed.
    auto *const module = dlopen(name, RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    return module != nullptr ? dlsym(module, table) : nullptr;
}
