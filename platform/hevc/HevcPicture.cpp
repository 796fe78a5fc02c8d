// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/hevc/HevcPicture.h"

#include "platform/hevc/LibavLog.h"

#include <algorithm>
#include <cstring>
#include <utility>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/imgutils.h>
#include <libavutil/pixdesc.h>
}

namespace {

/// What a decoder keeps beside the planes: modes, motion, filters. 1.3 were measured.
constexpr int64_t bytesBesidePixel = 2;
/// Brightness of one byte, and half of that for colours.
constexpr double fewestBytesPerPixel = 1.5;

struct Deleter {
    void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
};

template<typename T>
using Owned = std::unique_ptr<T, Deleter>;

const AVPixFmtDescriptor *describe(const AVFrame &frame)
{
    return av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
}

void fillGrey(const AVFrame &frame, const AVPixFmtDescriptor &format)
{
    const int bits = format.comp[0].depth;
    for (int plane = 0; plane < format.nb_components; ++plane) {
        const int shift = plane > 0 ? format.log2_chroma_h : 0;
        const auto bytes = static_cast<size_t>(frame.linesize[plane]) *
                           static_cast<size_t>(AV_CEIL_RSHIFT(frame.height, shift));
        if (bits <= 8) {
            std::memset(frame.data[plane], 128, bytes);
        } else {
            std::fill_n(reinterpret_cast<quint16 *>(frame.data[plane]), bytes / 2,
                        static_cast<quint16>(1 << (bits - 1)));
        }
    }
}

/// Takes memory for a picture as long as there is some left, whose bytes the context points to.
int takeBuffer(AVCodecContext *context, AVFrame *frame, int flags)
{
    auto &left = *static_cast<int64_t *>(context->opaque);
    const auto *const format = describe(*frame);
    const bool isPlanar = format != nullptr && (format->nb_components == 1 ||
                                                (format->flags & AV_PIX_FMT_FLAG_PLANAR) != 0);
    if (!isPlanar || (format->flags & AV_PIX_FMT_FLAG_BE) != 0) {
        return AVERROR(ENOSYS);
    }
    const auto planes = av_image_get_buffer_size(static_cast<AVPixelFormat>(frame->format),
                                                 frame->width, frame->height, 1);
    const auto beside = bytesBesidePixel * frame->width * frame->height;
    if (planes < 0 || planes + beside > left) {
        return AVERROR(ENOMEM);
    }
    left -= planes + beside;
    const int result = avcodec_default_get_buffer2(context, frame, flags);
    if (result == 0) {
        fillGrey(*frame, *format);
    }
    return result;
}

Owned<AVCodecContext> openDecoder(const QByteArray &configuration, int64_t &memory,
                                  int64_t mostPixels)
{
    const auto *const codec = avcodec_find_decoder(AV_CODEC_ID_HEVC);
    Owned<AVCodecContext> context(codec != nullptr ? avcodec_alloc_context3(codec) : nullptr);
    const auto size = static_cast<size_t>(configuration.size());
    auto *const extra = static_cast<uint8_t *>(av_mallocz(size + AV_INPUT_BUFFER_PADDING_SIZE));
    if (!context || extra == nullptr) {
        av_free(extra);
        return nullptr;
    }
    std::memcpy(extra, configuration.constData(), size);
    context->extradata = extra; // and is the context's from here on
    context->extradata_size = static_cast<int>(size);
    context->opaque = &memory;
    context->get_buffer2 = takeBuffer;
    context->max_pixels =
        std::min(mostPixels, static_cast<int64_t>(static_cast<double>(memory) /
                                                  (bytesBesidePixel + fewestBytesPerPixel)));
    context->thread_count = 1; // tiles are what is decoded side by side
    context->flags |= AV_CODEC_FLAG_UNALIGNED | AV_CODEC_FLAG_OUTPUT_CORRUPT;
    return avcodec_open2(context.get(), codec, nullptr) == 0 ? std::move(context) : nullptr;
}

/// Units are preceded by their length. Where the data was cut, the last is as long as what is left:
/// the library would leave it out, and it may be half a picture.
void shortenLastUnit(uint8_t *data, size_t size, const QByteArray &configuration)
{
    constexpr qsizetype lengthSizeAt = 21;
    if (configuration.size() <= lengthSizeAt) {
        return;
    }
    const size_t lengthSize = (static_cast<size_t>(configuration.at(lengthSizeAt)) & 3) + 1;
    for (size_t at = 0; size - at > lengthSize;) {
        size_t length = 0;
        for (size_t index = 0; index < lengthSize; ++index) {
            length = length << 8 | data[at + index];
        }
        const auto left = size - at - lengthSize;
        if (length > left) {
            for (size_t index = 0; index < lengthSize; ++index) {
                data[at + index] = static_cast<uint8_t>(left >> 8 * (lengthSize - 1 - index));
            }
            return;
        }
        at += lengthSize + length;
    }
}

} // namespace

struct HevcPicture::Frame {
    Owned<AVFrame> frame;
    const AVPixFmtDescriptor *format = nullptr;
};

std::optional<HevcPicture> HevcPicture::decode(const QByteArray &configuration,
                                               const QByteArray &data, qint64 memory,
                                               qint64 mostPixels)
{
    silenceLibav();
    int64_t left = memory;
    const auto decoder = openDecoder(configuration, left, mostPixels);
    const Owned<AVPacket> packet(av_packet_alloc());
    auto frame = std::make_unique<Frame>();
    frame->frame.reset(av_frame_alloc());
    constexpr qsizetype largestPacket = 1 << 30;
    if (!decoder || !packet || !frame->frame || data.isEmpty() || data.size() > largestPacket ||
        av_new_packet(packet.get(), static_cast<int>(data.size())) != 0) {
        return std::nullopt;
    }
    std::memcpy(packet->data, data.constData(), static_cast<size_t>(data.size()));
    shortenLastUnit(packet->data, static_cast<size_t>(data.size()), configuration);
    avcodec_send_packet(decoder.get(),
                        packet.get()); // damaged ones may give a picture all the same
    avcodec_send_packet(decoder.get(), nullptr);
    if (avcodec_receive_frame(decoder.get(), frame->frame.get()) != 0) {
        return std::nullopt;
    }
    frame->format = describe(*frame->frame);
    return HevcPicture(std::move(frame));
}

HevcPicture::HevcPicture(std::unique_ptr<Frame> frame)
    : m_frame(std::move(frame))
{
}

HevcPicture::HevcPicture(HevcPicture &&) noexcept = default;
HevcPicture &HevcPicture::operator=(HevcPicture &&) noexcept = default;
HevcPicture::~HevcPicture() = default;

QSize HevcPicture::size() const
{
    return {m_frame->frame->width, m_frame->frame->height};
}

int HevcPicture::bits() const
{
    return m_frame->format->comp[0].depth;
}

int HevcPicture::planeCount() const
{
    return m_frame->format->nb_components;
}

HevcPicture::Plane HevcPicture::plane(int index) const
{
    const auto &format = *m_frame->format;
    const auto &frame = *m_frame->frame;
    const int across = index > 0 ? format.log2_chroma_w : 0;
    const int down = index > 0 ? format.log2_chroma_h : 0;
    return {.bytes = frame.data[index],
            .stride = frame.linesize[index],
            .size = {AV_CEIL_RSHIFT(frame.width, across), AV_CEIL_RSHIFT(frame.height, down)}};
}

CodedColor HevcPicture::color() const
{
    const auto &frame = *m_frame->frame;
    return {.primaries = frame.color_primaries,
            .transfer = frame.color_trc,
            .matrix = frame.colorspace,
            .fullRange = frame.color_range == AVCOL_RANGE_JPEG};
}
