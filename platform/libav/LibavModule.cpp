// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/libav/LibavTable.h"

/// What the module is for: who asks it for this has the libraries loaded.
extern "C" __attribute__((visibility("default"))) const LibavTable kestleLibav;

const LibavTable kestleLibav = {
    .av_log_set_callback = &::av_log_set_callback,
    .av_log_set_level = &::av_log_set_level,
    .av_max_alloc = &::av_max_alloc,
    .av_malloc = &::av_malloc,
    .av_mallocz = &::av_mallocz,
    .av_strdup = &::av_strdup,
    .av_free = &::av_free,
    .av_freep = &::av_freep,
    .av_frame_alloc = &::av_frame_alloc,
    .av_frame_free = &::av_frame_free,
    .av_image_get_buffer_size = &::av_image_get_buffer_size,
    .av_pix_fmt_desc_get = &::av_pix_fmt_desc_get,
    .av_packet_alloc = &::av_packet_alloc,
    .av_packet_free = &::av_packet_free,
    .av_packet_unref = &::av_packet_unref,
    .av_new_packet = &::av_new_packet,
    .avcodec_find_decoder = &::avcodec_find_decoder,
    .avcodec_alloc_context3 = &::avcodec_alloc_context3,
    .avcodec_free_context = &::avcodec_free_context,
    .avcodec_parameters_to_context = &::avcodec_parameters_to_context,
    .avcodec_open2 = &::avcodec_open2,
    .avcodec_send_packet = &::avcodec_send_packet,
    .avcodec_receive_frame = &::avcodec_receive_frame,
    .avcodec_default_get_buffer2 = &::avcodec_default_get_buffer2,
    .avformat_alloc_context = &::avformat_alloc_context,
    .avformat_free_context = &::avformat_free_context,
    .avformat_open_input = &::avformat_open_input,
    .avformat_close_input = &::avformat_close_input,
    .avformat_find_stream_info = &::avformat_find_stream_info,
    .av_find_best_stream = &::av_find_best_stream,
    .av_read_frame = &::av_read_frame,
    .av_stream_get_side_data = &::av_stream_get_side_data,
    .avio_alloc_context = &::avio_alloc_context,
    .avio_context_free = &::avio_context_free,
    .sws_getContext = &::sws_getContext,
    .sws_freeContext = &::sws_freeContext,
    .sws_getCoefficients = &::sws_getCoefficients,
    .sws_setColorspaceDetails = &::sws_setColorspaceDetails,
    .sws_scale = &::sws_scale,
};
