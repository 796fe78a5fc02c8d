// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/HevcEncoder.h"

#include <QtEndian>

#include <libheif/heif.h>

#include <memory>

#ifdef __SANITIZE_ADDRESS__
// x265 3.5 forgets some 14 KB with every encoder, however it is closed.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libx265.so";
}
#endif

namespace {

template<auto release>
struct Release {
    template<typename T>
    void operator()(T *owned) const
    {
        release(owned);
    }
};

using Context = std::unique_ptr<heif_context, Release<heif_context_free>>;
using Encoder = std::unique_ptr<heif_encoder, Release<heif_encoder_release>>;
using Picture = std::unique_ptr<heif_image, Release<heif_image_release>>;

bool worked(const heif_error &error)
{
    return error.code == heif_error_Ok;
}

heif_error append(heif_context * /*context*/, const void *data, size_t size, void *bytes)
{
    static_cast<QByteArray *>(bytes)->append(static_cast<const char *>(data),
                                             static_cast<qsizetype>(size));
    return {heif_error_Ok, heif_suberror_Unspecified, "Success"};
}

/// Samples of red, green and blue, or of grey, in turn.
Picture picture(const QImage &image, bool grey, int bits)
{
    const auto chroma = grey       ? heif_chroma_monochrome
                        : bits > 8 ? heif_chroma_interleaved_RRGGBB_LE
                                   : heif_chroma_interleaved_RGB;
    const auto channel = grey ? heif_channel_Y : heif_channel_interleaved;
    heif_image *raw = nullptr;
    if (!worked(heif_image_create(image.width(), image.height(),
                                  grey ? heif_colorspace_monochrome : heif_colorspace_RGB, chroma,
                                  &raw)) ||
        !worked(heif_image_add_plane(raw, channel, image.width(), image.height(), bits))) {
        return {};
    }
    Picture result(raw);
    int stride = 0;
    auto *const plane = heif_image_get_plane(raw, channel, &stride);
    for (int y = 0; y < image.height(); ++y) {
        auto *to = plane + ptrdiff_t{y} * stride;
        const auto put = [&](int value) {
            const auto wide = static_cast<quint16>(value * ((1 << bits) - 1) / 255);
            if (bits > 8) {
                qToLittleEndian(wide, to);
            } else {
                *to = static_cast<uint8_t>(wide);
            }
            to += bits > 8 ? 2 : 1;
        };
        for (int x = 0; x < image.width(); ++x) {
            const auto pixel = image.pixel(x, y);
            put(grey ? qGray(pixel) : qRed(pixel));
            if (!grey) {
                put(qGreen(pixel));
                put(qBlue(pixel));
            }
        }
    }
    return result;
}

QByteArray file(const QImage &image, const char *chroma, int bits)
{
    const bool grey = qstrcmp(chroma, "400") == 0;
    const Context context(heif_context_alloc());
    heif_encoder *raw = nullptr;
    if (!worked(heif_context_get_encoder_for_format(context.get(), heif_compression_HEVC, &raw))) {
        return {};
    }
    const Encoder encoder(raw);
    heif_encoder_set_lossy_quality(raw, 100);
    heif_encoder_set_parameter_string(raw, "preset", "ultrafast");
    heif_encoder_set_parameter_string(raw, "x265:pools", "none");
    heif_encoder_set_parameter_string(raw, "x265:frame-threads", "1");
    if (!grey) {
        heif_encoder_set_parameter_string(raw, "chroma", chroma);
    }
    const auto pixels = picture(image, grey, bits);
    QByteArray bytes;
    heif_writer writer{.writer_api_version = 1, .write = append};
    const bool written =
        pixels &&
        worked(heif_context_encode_image(context.get(), pixels.get(), raw, nullptr, nullptr)) &&
        worked(heif_context_write(context.get(), &writer, &bytes));
    return written ? bytes : QByteArray();
}

} // namespace

HevcEncoder::Coded HevcEncoder::encode(const QImage &image, const char *chroma, int bits)
{
    const auto bytes = file(image, chroma, bits);
    const auto configuration = bytes.indexOf("hvcC") - 4;
    const auto data = bytes.indexOf("mdat") + 4;
    if (configuration < 0 || data < 4) {
        return {};
    }
    return {bytes.mid(configuration, qFromBigEndian<qint32>(bytes.constData() + configuration)),
            bytes.mid(data)};
}
