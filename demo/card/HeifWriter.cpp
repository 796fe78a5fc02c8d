// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/card/HeifWriter.h"

#include "demo/card/ExifWriter.h"

#include <QtEndian>

#include <libheif/heif.h>

#include <memory>
#include <mutex>

using namespace Qt::StringLiterals;

#ifdef __SANITIZE_ADDRESS__
// x265 3.5 forgets some 14 KB with every encoder, however it is closed. What libheif allocates, and
// we would have to release, is still reported.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libx265.so";
}
#endif

namespace HeifWriter {

constexpr int quality = 50;
constexpr int bitDepth = 10;
constexpr QSize thumbnailSize(9 * block, 6 * block);

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
using Handle = std::unique_ptr<heif_image_handle, Release<heif_image_handle_release>>;
using Options = std::unique_ptr<heif_encoding_options, Release<heif_encoding_options_free>>;

} // namespace

static bool worked(const heif_error &error)
{
    return error.code == heif_error_Ok;
}

static Encoder encoder(heif_context *context)
{
    heif_encoder *raw = nullptr;
    if (!worked(heif_context_get_encoder_for_format(context, heif_compression_HEVC, &raw))) {
        return {};
    }
    Encoder result(raw);
    // Grain is costly: as little search as the encoder can do with. Every core is busy with a shot
    // of its own already, so no threads either.
    constexpr std::pair<const char *, const char *> parameters[] = {
        {"preset", "ultrafast"},     {"chroma", "422"},
        {"x265:min-cu-size", "32"},  {"x265:rd", "1"},
        {"x265:aq-mode", "0"},       {"x265:pools", "none"},
        {"x265:frame-threads", "1"},
    };
    bool accepted = worked(heif_encoder_set_lossy_quality(raw, quality));
    for (const auto &[name, value] : parameters) {
        accepted = accepted && worked(heif_encoder_set_parameter_string(raw, name, value));
    }
    return accepted ? std::move(result) : Encoder();
}

static Picture picture(const QImage &stored)
{
    heif_image *raw = nullptr;
    if (stored.isNull() || stored.width() % block != 0 || stored.height() % block != 0 ||
        !worked(heif_image_create(stored.width(), stored.height(), heif_colorspace_RGB,
                                  heif_chroma_interleaved_RRGGBB_LE, &raw))) {
        return {};
    }
    Picture result(raw);
    if (!worked(heif_image_add_plane(raw, heif_channel_interleaved, stored.width(), stored.height(),
                                     bitDepth))) {
        return {};
    }
    int stride = 0;
    uint8_t *const plane = heif_image_get_plane(raw, heif_channel_interleaved, &stride);
    const auto widened = [](int value) {
        return qToLittleEndian(static_cast<quint16>(value << 2 | value >> 6));
    };
    for (int y = 0; y < stored.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(stored.constScanLine(y));
        auto *to = reinterpret_cast<quint16 *>(plane + static_cast<ptrdiff_t>(y) * stride);
        for (int x = 0; x < stored.width(); ++x) {
            *to++ = widened(qRed(from[x]));
            *to++ = widened(qGreen(from[x]));
            *to++ = widened(qBlue(from[x]));
        }
    }
    return result;
}

// libheif 1.15 gives turned pictures the size they are shown in, where the format wants the size
// before the turn (ISO 23008-12, 6.5.3). All pictures in the file are as wide as @p stored is.
static void correctSizes(QByteArray &file, const QImage &stored)
{
    const qsizetype end = file.indexOf("mdat");
    for (qsizetype at = file.indexOf("ispe"); at >= 0 && at < end;
         at = file.indexOf("ispe", at + 4)) {
        auto *const width = reinterpret_cast<uchar *>(file.data() + at + 8);
        auto *const height = width + 4;
        const auto across = qFromBigEndian<quint32>(width);
        const auto down = qFromBigEndian<quint32>(height);
        if ((across > down) != (stored.width() > stored.height())) {
            qToBigEndian(down, width);
            qToBigEndian(across, height);
        }
    }
}

static heif_error append(heif_context * /*context*/, const void *data, size_t size, void *bytes)
{
    static_cast<QByteArray *>(bytes)->append(static_cast<const char *>(data),
                                             static_cast<qsizetype>(size));
    return {heif_error_Ok, heif_suberror_Unspecified, "Success"};
}

// The same picture, in whole blocks: a sliver less where its sides are not as 3 to 2.
static QImage thumbnail(const QImage &stored)
{
    const QSize size =
        stored.width() < stored.height() ? thumbnailSize.transposed() : thumbnailSize;
    const QImage covering =
        stored.scaled(size, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    const QSize spare = covering.size() - size;
    return covering.copy(QRect(QPoint(spare.width() / 2, spare.height() / 2), size));
}

namespace {

/// One file while it is written.
class HeifFile {
public:
    HeifFile()
        : m_context(heif_context_alloc())
        , m_encoder(encoder(m_context.get()))
    {
    }

    [[nodiscard]] bool hasEncoder() const { return m_encoder != nullptr; }

    /// Null when it does not work.
    [[nodiscard]] Handle add(const QImage &stored, int orientation)
    {
        const Picture pixels = picture(stored);
        const Options options(heif_encoding_options_alloc());
        options->image_orientation = static_cast<heif_orientation>(orientation);
        heif_image_handle *raw = nullptr;
        const bool isEncoded =
            pixels && worked(heif_context_encode_image(m_context.get(), pixels.get(),
                                                       m_encoder.get(), options.get(), &raw));
        return Handle(isEncoded ? raw : nullptr);
    }

    [[nodiscard]] bool describe(const Handle &main, const Handle &small, const QByteArray &exif)
    {
        return worked(heif_context_assign_thumbnail(m_context.get(), main.get(), small.get())) &&
               worked(heif_context_add_exif_metadata(m_context.get(), main.get(), exif.constData(),
                                                     static_cast<int>(exif.size())));
    }

    /// Empty when it does not work.
    [[nodiscard]] QByteArray bytes() const
    {
        QByteArray result;
        heif_writer writer{.writer_api_version = 1, .write = append};
        const bool isWritten = worked(heif_context_write(m_context.get(), &writer, &result));
        return isWritten ? result : QByteArray();
    }

private:
    Context m_context;
    Encoder m_encoder;
};

} // namespace

static Written encode(const QImage &stored, const CaptureSettings &settings)
{
    HeifFile file;
    if (!file.hasEncoder()) {
        return {{}, u"libheif has no HEVC encoder."_s};
    }
    const Handle main = file.add(stored, settings.orientation);
    const Handle small = main ? file.add(thumbnail(stored), settings.orientation) : Handle();
    QByteArray bytes;
    if (small && file.describe(main, small, ExifWriter::structure(settings, stored.size()))) {
        bytes = file.bytes();
    }
    if (bytes.isEmpty()) {
        return {{}, u"libheif does not take them."_s};
    }
    correctSizes(bytes, stored);
    return {bytes};
}

Written write(const QImage &stored, const CaptureSettings &settings)
{
    // The first encoder in a process fills x265's tables, which it does without a lock.
    static std::once_flag first;
    std::call_once(first, [] {
        QImage any(64, 64, QImage::Format_RGB32);
        any.fill(Qt::gray);
        (void)encode(any, {});
    });
    return encode(stored, settings);
}

} // namespace HeifWriter
