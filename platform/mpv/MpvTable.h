// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <mpv/client.h>
#include <mpv/render.h>
#include <mpv/stream_cb.h>

/// libmpv's functions that are used here, as the module has them.
struct MpvTable {
    decltype(&::mpv_create) mpv_create;
    decltype(&::mpv_initialize) mpv_initialize;
    decltype(&::mpv_terminate_destroy) mpv_terminate_destroy;
    decltype(&::mpv_free) mpv_free;
    decltype(&::mpv_set_option) mpv_set_option;
    decltype(&::mpv_set_option_string) mpv_set_option_string;
    decltype(&::mpv_command_async) mpv_command_async;
    decltype(&::mpv_set_property) mpv_set_property;
    decltype(&::mpv_set_property_async) mpv_set_property_async;
    decltype(&::mpv_get_property) mpv_get_property;
    decltype(&::mpv_get_property_async) mpv_get_property_async;
    decltype(&::mpv_observe_property) mpv_observe_property;
    decltype(&::mpv_hook_add) mpv_hook_add;
    decltype(&::mpv_hook_continue) mpv_hook_continue;
    decltype(&::mpv_wait_event) mpv_wait_event;
    decltype(&::mpv_set_wakeup_callback) mpv_set_wakeup_callback;
    decltype(&::mpv_stream_cb_add_ro) mpv_stream_cb_add_ro;
    decltype(&::mpv_render_context_create) mpv_render_context_create;
    decltype(&::mpv_render_context_free) mpv_render_context_free;
    decltype(&::mpv_render_context_render) mpv_render_context_render;
    decltype(&::mpv_render_context_set_update_callback) mpv_render_context_set_update_callback;
    decltype(&::mpv_render_context_update) mpv_render_context_update;
};
