// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libavutil/log.h>
#include <libavutil/mem.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

/// FFmpeg's functions that are used here, as the module has them.
struct LibavTable {
    decltype(&::av_log_set_callback) av_log_set_callback;
    decltype(&::av_log_set_level) av_log_set_level;
    decltype(&::av_max_alloc) av_max_alloc;
    decltype(&::av_malloc) av_malloc;
    decltype(&::av_mallocz) av_mallocz;
    decltype(&::av_strdup) av_strdup;
    decltype(&::av_free) av_free;
    decltype(&::av_freep) av_freep;
    decltype(&::av_frame_alloc) av_frame_alloc;
    decltype(&::av_frame_free) av_frame_free;
    decltype(&::av_image_get_buffer_size) av_image_get_buffer_size;
    decltype(&::av_pix_fmt_desc_get) av_pix_fmt_desc_get;
    decltype(&::av_packet_alloc) av_packet_alloc;
    decltype(&::av_packet_free) av_packet_free;
    decltype(&::av_packet_unref) av_packet_unref;
    decltype(&::av_new_packet) av_new_packet;
    decltype(&::avcodec_find_decoder) avcodec_find_decoder;
    decltype(&::avcodec_alloc_context3) avcodec_alloc_context3;
    decltype(&::avcodec_free_context) avcodec_free_context;
    decltype(&::avcodec_parameters_to_context) avcodec_parameters_to_context;
    decltype(&::avcodec_open2) avcodec_open2;
    decltype(&::avcodec_send_packet) avcodec_send_packet;
    decltype(&::avcodec_receive_frame) avcodec_receive_frame;
    decltype(&::avcodec_default_get_buffer2) avcodec_default_get_buffer2;
    decltype(&::avformat_alloc_context) avformat_alloc_context;
    decltype(&::avformat_free_context) avformat_free_context;
    decltype(&::avformat_open_input) avformat_open_input;
    decltype(&::avformat_close_input) avformat_close_input;
    decltype(&::avformat_find_stream_info) avformat_find_stream_info;
    decltype(&::av_find_best_stream) av_find_best_stream;
    decltype(&::av_read_frame) av_read_frame;
    decltype(&::av_stream_get_side_data) av_stream_get_side_data;
    decltype(&::avio_alloc_context) avio_alloc_context;
    decltype(&::avio_context_free) avio_context_free;
    decltype(&::sws_getContext) sws_getContext;
    decltype(&::sws_freeContext) sws_freeContext;
    decltype(&::sws_getCoefficients) sws_getCoefficients;
    decltype(&::sws_setColorspaceDetails) sws_setColorspaceDetails;
    decltype(&::sws_scale) sws_scale;
};
