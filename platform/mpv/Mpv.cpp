// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/mpv/Mpv.h"

#include "platform/modules/Module.h"
#include "platform/modules/ModuleCall.h"
#include "platform/mpv/MpvTable.h"

/// Null where the library cannot be had.
static const MpvTable *mpv()
{
    static const auto *const table =
        static_cast<const MpvTable *>(moduleTable("libkestle-mpv.so", "kestleMpv"));
    return table;
}

bool loadMpv()
{
    return mpv() != nullptr;
}

// libmpv's functions by their own names, so that who uses them need not know of the table.

mpv_handle *mpv_create()
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_create);
}

int mpv_initialize(mpv_handle *handle)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_initialize, handle);
}

void mpv_terminate_destroy(mpv_handle *handle)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_terminate_destroy, handle);
}

void mpv_free(void *data)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_free, data);
}

int mpv_set_option(mpv_handle *handle, const char *name, mpv_format format, void *data)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_set_option, handle, name, format,
                                         data);
}

int mpv_set_option_string(mpv_handle *handle, const char *name, const char *data)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_set_option_string, handle, name,
                                         data);
}

int mpv_command_async(mpv_handle *handle, uint64_t reply, const char **arguments)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_command_async, handle, reply,
                                         arguments);
}

int mpv_set_property(mpv_handle *handle, const char *name, mpv_format format, void *data)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_set_property, handle, name, format,
                                         data);
}

int mpv_set_property_async(mpv_handle *handle, uint64_t reply, const char *name, mpv_format format,
                           void *data)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_set_property_async, handle, reply,
                                         name, format, data);
}

int mpv_get_property(mpv_handle *handle, const char *name, mpv_format format, void *data)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_get_property, handle, name, format,
                                         data);
}

int mpv_get_property_async(mpv_handle *handle, uint64_t reply, const char *name, mpv_format format)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_get_property_async, handle, reply,
                                         name, format);
}

int mpv_observe_property(mpv_handle *handle, uint64_t reply, const char *name, mpv_format format)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_observe_property, handle, reply,
                                         name, format);
}

int mpv_hook_add(mpv_handle *handle, uint64_t reply, const char *name, int priority)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_hook_add, handle, reply, name,
                                         priority);
}

int mpv_hook_continue(mpv_handle *handle, uint64_t id)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_hook_continue, handle, id);
}

mpv_event *mpv_wait_event(mpv_handle *handle, double seconds)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_wait_event, handle, seconds);
}

void mpv_set_wakeup_callback(mpv_handle *handle, void (*wakeup)(void *), void *data)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_set_wakeup_callback, handle, wakeup,
                                         data);
}

int mpv_stream_cb_add_ro(mpv_handle *handle, const char *protocol, void *data,
                         mpv_stream_cb_open_ro_fn open)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_stream_cb_add_ro, handle, protocol,
                                         data, open);
}

int mpv_render_context_create(mpv_render_context **context, mpv_handle *handle,
                              mpv_render_param *parameters)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_render_context_create, context,
                                         handle, parameters);
}

void mpv_render_context_free(mpv_render_context *context)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_render_context_free, context);
}

int mpv_render_context_render(mpv_render_context *context, mpv_render_param *parameters)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_render_context_render, context,
                                         parameters);
}

void mpv_render_context_set_update_callback(mpv_render_context *context,
                                            mpv_render_update_fn update, void *data)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_render_context_set_update_callback,
                                         context, update, data);
}

uint64_t mpv_render_context_update(mpv_render_context *context)
{
    return callModule<MPV_ERROR_GENERIC>(mpv(), &MpvTable::mpv_render_context_update, context);
}
