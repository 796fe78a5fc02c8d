// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

/// A stretch of a file, in bytes.
struct ByteRange {
    qint64 offset = 0;
    qint64 length = 0;

    bool operator==(const ByteRange &) const = default;
};
