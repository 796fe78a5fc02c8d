// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/PosterFrame.h"

#include "platform/hevc/CodedColor.h"
#include "platform/hevc/LibavLimits.h"
#include "platform/hevc/LibavLog.h"
#include "platform/imageio/ColorProfile.h"
#include "platform/imageio/ToneCurve.h"
#include "platform/media/MediaInput.h"
#include "platform/media/MediaLimits.h"
#include "platform/media/MovieBoxes.h"
#include "platform/media/PictureTurn.h"
#include "platform/media/SampleCount.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

namespace {

constexpr auto mostTime = std::chrono::seconds(5);
/// Packets until the first frame; a group of pictures and the sound between has some hundred.
constexpr int mostPackets = 1000;

struct Deleter {
    void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
    void operator()(SwsContext *context) const { sws_freeContext(context); }
};

template<typename T>
using Owned = std::unique_ptr<T, Deleter>;

Owned<AVCodecContext> openDecoder(const AVStream &stream)
{
    const auto *codec = avcodec_find_decoder(stream.codecpar->codec_id);
    Owned<AVCodecContext> context(codec != nullptr ? avcodec_alloc_context3(codec) : nullptr);
    if (!context || avcodec_parameters_to_context(context.get(), stream.codecpar) < 0) {
        return nullptr;
    }
    context->max_pixels = MediaLimits::mostPixels;
    context->thread_count = 1; // one frame: further threads would only delay it
    return avcodec_open2(context.get(), codec, nullptr) == 0 ? std::move(context) : nullptr;
}

/// The first frame that is to be shown.
Owned<AVFrame> firstFrame(AVFormatContext &input, const AVStream &stream)
{
    const auto decoder = openDecoder(stream);
    Owned<AVFrame> frame(av_frame_alloc());
    const Owned<AVPacket> packet(av_packet_alloc());
    if (!decoder || !frame || !packet) {
        return nullptr;
    }
    for (int count = 0; count < mostPackets; ++count) {
        const bool ended = av_read_frame(&input, packet.get()) < 0;
        if (ended) {
            avcodec_send_packet(decoder.get(), nullptr); // gives out what it holds back
        } else if (packet->stream_index == stream.index) {
            avcodec_send_packet(decoder.get(), packet.get()); // a damaged one is passed over
        }
        av_packet_unref(packet.get());
        if (avcodec_receive_frame(decoder.get(), frame.get()) == 0) {
            return frame;
        }
        if (ended) {
            break;
        }
    }
    return nullptr;
}

/// The size with square pixels, made to fit.
QSize shownSize(const AVFrame &frame, const AVStream &stream, int maxPixel)
{
    auto aspect = stream.sample_aspect_ratio;
    if (aspect.num <= 0 || aspect.den <= 0) {
        aspect = frame.sample_aspect_ratio;
    }
    const double stretch = aspect.num > 0 && aspect.den > 0 ? av_q2d(aspect) : 1;
    const double width = frame.width * std::clamp(stretch, 0.1, 10.0);
    const double scale = std::min(1.0, maxPixel / std::max(width, double(frame.height)));
    const auto edge = [scale](double length) {
        return std::max(1, static_cast<int>(std::lround(length * scale)));
    };
    return {edge(width), edge(frame.height)};
}

/// What brightness and colour differences mean. Where a clip does not say so, its size tells: high
/// definition is ITU-R BT.709, less is BT.601.
const int *matrixOf(const AVFrame &frame)
{
    const bool isUnknown = frame.colorspace == AVCOL_SPC_UNSPECIFIED;
    const bool isLarge = frame.width >= 1280 || frame.height > 576;
    return sws_getCoefficients(isUnknown && isLarge ? AVCOL_SPC_BT709 : frame.colorspace);
}

QImage toImage(const AVFrame &frame, QSize size)
{
    const auto format = static_cast<AVPixelFormat>(frame.format);
    const Owned<SwsContext> scaler(
        sws_getContext(frame.width, frame.height, format, size.width(), size.height(),
                       AV_PIX_FMT_BGR0, SWS_BICUBIC | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
    QImage image(size, QImage::Format_RGB32);
    if (!scaler || image.isNull()) {
        return {};
    }
    const int fullRange = frame.color_range == AVCOL_RANGE_JPEG ? 1 : 0;
    constexpr int neutral = 1 << 16;
    sws_setColorspaceDetails(scaler.get(), matrixOf(frame), fullRange,
                             sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, neutral, neutral);
    uint8_t *const planes[] = {image.bits(), nullptr, nullptr, nullptr};
    const int strides[] = {static_cast<int>(image.bytesPerLine()), 0, 0, 0};
    if (sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, planes, strides) !=
        size.height()) {
        return {};
    }
    // The fourth byte comes out as it likes; in RGB32 it is 255.
    for (int row = 0; row < image.height(); ++row) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(row));
        std::transform(line, line + image.width(), line,
                       [](QRgb pixel) { return pixel | 0xff000000U; });
    }
    return image;
}

/// The colours as those of sRGB.
QImage toSrgb(QImage image, const AVFrame &frame)
{
    if (const auto *table = ToneCurve::table(frame.color_trc)) {
        const auto drawnIn = [table](int value) {
            return static_cast<int>(
                (*table)[static_cast<size_t>(value * (ToneCurve::steps - 1) / 255)]);
        };
        for (int row = 0; row < image.height(); ++row) {
            auto *line = reinterpret_cast<QRgb *>(image.scanLine(row));
            std::transform(line, line + image.width(), line, [&](QRgb pixel) {
                return qRgb(drawnIn(qRed(pixel)), drawnIn(qGreen(pixel)), drawnIn(qBlue(pixel)));
            });
        }
    }
    return ColorProfile::toSrgb(std::move(image), CodedColor{.primaries = frame.color_primaries,
                                                             .transfer = frame.color_trc});
}

/// As the display matrix says.
QImage turned(const QImage &image, const AVStream &stream)
{
    size_t size = 0;
    const auto *data = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (data == nullptr || size < sizeof(PictureTurn::Matrix)) {
        return image;
    }
    PictureTurn::Matrix matrix = {};
    std::memcpy(matrix.data(), data, sizeof matrix);
    const auto turn = PictureTurn::of(matrix);
    return turn == PictureTurn()
               ? image
               : image.transformed(turn.transform()).convertToFormat(QImage::Format_RGB32);
}

} // namespace

static bool isMonstrous(const InputFile &file)
{
    MovieBoxes movie(file);
    return SampleCount::isMonstrous(movie);
}

QImage posterFrame(const std::filesystem::path &path, int maxPixel)
{
    silenceLibav();
    limitLibav();
    auto file = InputFile::open(path);
    if (!file || maxPixel < 1 || isMonstrous(*file)) {
        return {};
    }
    const MediaInput input(std::move(*file), mostTime);
    if (!input.isOpen() || avformat_find_stream_info(input.context(), nullptr) < 0) {
        return {};
    }
    const int index = av_find_best_stream(input.context(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (index < 0) {
        return {};
    }
    const auto &stream = *input.context()->streams[index];
    const auto frame = firstFrame(*input.context(), stream);
    if (!frame || frame->width < 1 || frame->height < 1) {
        return {};
    }
    const auto image = toImage(*frame, shownSize(*frame, stream, maxPixel));
    return turned(toSrgb(image, *frame), stream);
}
