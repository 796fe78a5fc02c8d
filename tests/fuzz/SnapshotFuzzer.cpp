// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/SessionSnapshot.h"
#include "platform/checks/Precondition.h"

#include <cstddef>
#include <cstdint>

// Kept sessions: what can be read can be written, and is then the same.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray json(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (const auto snapshot = SessionSnapshot::fromJson(json)) {
        precondition(SessionSnapshot::fromJson(snapshot->toJson()) == snapshot,
                     "a snapshot comes back as it was");
    }
    return 0;
}
