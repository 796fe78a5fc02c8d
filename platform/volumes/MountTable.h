// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/volumes/Mount.h"

#include <QByteArrayView>
#include <QList>

/// The kernel's list of mounts, in mount order.
namespace MountTable {

/// Reads a text in the format of /proc/[pid]/mountinfo, see proc_pid_mountinfo(5). Lines that do
/// not keep to it are left out. Safe from any thread.
[[nodiscard]] QList<Mount> parse(QByteArrayView text);

/// What this process sees now; empty when that cannot be told. Reads memory of the kernel only,
/// never a volume. Safe from any thread.
[[nodiscard]] QList<Mount> current();

} // namespace MountTable
