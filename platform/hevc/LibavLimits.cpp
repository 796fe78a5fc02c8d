// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/hevc/LibavLimits.h"

#include <cstddef>

extern "C" {
#include <libavutil/mem.h>
}

/// A plane of 64 megapixels at 16 bit, twice.
static constexpr size_t mostBytesAtOnce = size_t{256} * 1024 * 1024;

void limitLibav()
{
    // Theirs is a plain variable: one thread sets it, once.
    [[maybe_unused]] static const bool limited = [] {
        av_max_alloc(mostBytesAtOnce);
        return true;
    }();
}
