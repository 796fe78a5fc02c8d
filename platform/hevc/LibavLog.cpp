// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/hevc/LibavLog.h"

extern "C" {
#include <libavutil/log.h>
}

void silenceLibav()
{
    // Theirs is a plain variable: one thread sets it, once.
    [[maybe_unused]] static const bool silent = [] {
        av_log_set_callback([](void *, int, const char *, va_list) {});
        av_log_set_level(AV_LOG_QUIET); // for when libmpv puts their own callback back
        return true;
    }();
}
