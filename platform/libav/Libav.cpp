// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/libav/Libav.h"

#include "platform/libav/LibavTable.h"
#include "platform/modules/Module.h"
#include "platform/modules/ModuleCall.h"

/// Null where the libraries cannot be had.
static const LibavTable *libav()
{
    static const auto *const table =
        static_cast<const LibavTable *>(moduleTable("libkestle-libav.so", "kestleLibav"));
    return table;
}

bool loadLibav()
{
    return libav() != nullptr;
}

// FFmpeg's functions by their own names, so that who uses them need not know of the table.

void av_log_set_callback(void (*callback)(void *, int, const char *, va_list))
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_log_set_callback, callback);
}

void av_log_set_level(int level)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_log_set_level, level);
}

void av_max_alloc(size_t most)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_max_alloc, most);
}

void *av_malloc(size_t size)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_malloc, size);
}

void *av_mallocz(size_t size)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_mallocz, size);
}

char *av_strdup(const char *text)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_strdup, text);
}

void av_free(void *memory)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_free, memory);
}

void av_freep(void *memory)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_freep, memory);
}

AVFrame *av_frame_alloc()
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_frame_alloc);
}

void av_frame_free(AVFrame **frame)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_frame_free, frame);
}

int av_image_get_buffer_size(AVPixelFormat format, int width, int height, int align)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_image_get_buffer_size, format,
                                        width, height, align);
}

const AVPixFmtDescriptor *av_pix_fmt_desc_get(AVPixelFormat format)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_pix_fmt_desc_get, format);
}

AVPacket *av_packet_alloc()
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_packet_alloc);
}

void av_packet_free(AVPacket **packet)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_packet_free, packet);
}

void av_packet_unref(AVPacket *packet)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_packet_unref, packet);
}

int av_new_packet(AVPacket *packet, int size)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_new_packet, packet, size);
}

const AVCodec *avcodec_find_decoder(AVCodecID id)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avcodec_find_decoder, id);
}

AVCodecContext *avcodec_alloc_context3(const AVCodec *codec)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avcodec_alloc_context3, codec);
}

void avcodec_free_context(AVCodecContext **context)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avcodec_free_context, context);
}

int avcodec_parameters_to_context(AVCodecContext *context, const AVCodecParameters *parameters)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avcodec_parameters_to_context,
                                        context, parameters);
}

int avcodec_open2(AVCodecContext *context, const AVCodec *codec, AVDictionary **options)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avcodec_open2, context, codec,
                                        options);
}

int avcodec_send_packet(AVCodecContext *context, const AVPacket *packet)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avcodec_send_packet, context, packet);
}

int avcodec_receive_frame(AVCodecContext *context, AVFrame *frame)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avcodec_receive_frame, context,
                                        frame);
}

int avcodec_default_get_buffer2(AVCodecContext *context, AVFrame *frame, int flags)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avcodec_default_get_buffer2, context,
                                        frame, flags);
}

AVFormatContext *avformat_alloc_context()
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avformat_alloc_context);
}

void avformat_free_context(AVFormatContext *context)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avformat_free_context, context);
}

int avformat_open_input(AVFormatContext **context, const char *url, const AVInputFormat *format,
                        AVDictionary **options)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avformat_open_input, context, url,
                                        format, options);
}

void avformat_close_input(AVFormatContext **context)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avformat_close_input, context);
}

int avformat_find_stream_info(AVFormatContext *context, AVDictionary **options)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avformat_find_stream_info, context,
                                        options);
}

int av_find_best_stream(AVFormatContext *context, AVMediaType type, int wanted, int related,
                        const AVCodec **decoder, int flags)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_find_best_stream, context, type,
                                        wanted, related, decoder, flags);
}

int av_read_frame(AVFormatContext *context, AVPacket *packet)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_read_frame, context, packet);
}

uint8_t *av_stream_get_side_data(const AVStream *stream, AVPacketSideDataType type, size_t *size)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::av_stream_get_side_data, stream, type,
                                        size);
}

AVIOContext *avio_alloc_context(unsigned char *buffer, int size, int isWritable, void *opaque,
                                int (*read)(void *, uint8_t *, int),
                                int (*write)(void *, uint8_t *, int),
                                int64_t (*seek)(void *, int64_t, int))
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avio_alloc_context, buffer, size,
                                        isWritable, opaque, read, write, seek);
}

void avio_context_free(AVIOContext **context)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::avio_context_free, context);
}

SwsContext *sws_getContext(int width, int height, AVPixelFormat format, int newWidth, int newHeight,
                           AVPixelFormat newFormat, int flags, SwsFilter *filter,
                           SwsFilter *newFilter, const double *parameters)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::sws_getContext, width, height, format,
                                        newWidth, newHeight, newFormat, flags, filter, newFilter,
                                        parameters);
}

void sws_freeContext(SwsContext *context)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::sws_freeContext, context);
}

const int *sws_getCoefficients(int space)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::sws_getCoefficients, space);
}

int sws_setColorspaceDetails(SwsContext *context, const int matrix[4], int range,
                             const int newMatrix[4], int newRange, int brightness, int contrast,
                             int saturation)
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::sws_setColorspaceDetails, context,
                                        matrix, range, newMatrix, newRange, brightness, contrast,
                                        saturation);
}

int sws_scale(SwsContext *context, const uint8_t *const rows[], const int strides[], int top,
              int height, uint8_t *const newRows[], const int newStrides[])
{
    return callModule<AVERROR_EXTERNAL>(libav(), &LibavTable::sws_scale, context, rows, strides,
                                        top, height, newRows, newStrides);
}
