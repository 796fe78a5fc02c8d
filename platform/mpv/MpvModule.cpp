// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/mpv/MpvTable.h"

/// What the module is for: who asks it for this has the library loaded.
extern "C" __attribute__((visibility("default"))) const MpvTable kestleMpv;

const MpvTable kestleMpv = {
    .mpv_create = &::mpv_create,
    .mpv_initialize = &::mpv_initialize,
    .mpv_terminate_destroy = &::mpv_terminate_destroy,
    .mpv_free = &::mpv_free,
    .mpv_set_option = &::mpv_set_option,
    .mpv_set_option_string = &::mpv_set_option_string,
    .mpv_command_async = &::mpv_command_async,
    .mpv_set_property = &::mpv_set_property,
    .mpv_set_property_async = &::mpv_set_property_async,
    .mpv_get_property = &::mpv_get_property,
    .mpv_get_property_async = &::mpv_get_property_async,
    .mpv_observe_property = &::mpv_observe_property,
    .mpv_hook_add = &::mpv_hook_add,
    .mpv_hook_continue = &::mpv_hook_continue,
    .mpv_wait_event = &::mpv_wait_event,
    .mpv_set_wakeup_callback = &::mpv_set_wakeup_callback,
    .mpv_stream_cb_add_ro = &::mpv_stream_cb_add_ro,
    .mpv_render_context_create = &::mpv_render_context_create,
    .mpv_render_context_free = &::mpv_render_context_free,
    .mpv_render_context_render = &::mpv_render_context_render,
    .mpv_render_context_set_update_callback = &::mpv_render_context_set_update_callback,
    .mpv_render_context_update = &::mpv_render_context_update,
};
