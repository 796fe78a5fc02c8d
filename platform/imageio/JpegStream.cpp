// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/JpegStream.h"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdio>
#include <utility>
#include <vector>

#include <jpeglib.h>
// After jpeglib.h, which it needs.
#include <jerror.h>

namespace {

constexpr qint64 chunkSize = 64 * 1024;

/// Scans times pixels that a progressive picture may have in all: some ten scans are usual, and
/// every further one of a large empty picture is a few bytes that cost a walk through all of it.
constexpr qint64 mostScanPixels = 2'000'000'000;
constexpr qint64 fewestScansAllowed = 16;
constexpr qint64 mostScansAllowed = 200;

} // namespace

/// What libjpeg works on. Its errors jump; nothing with a destructor may lie between the jump and
/// guarded(), so everything that has one is kept here.
struct JpegStream::Session {
    Session(const InputFile &inputFile, ByteRange range)
        : file(inputFile)
        , next(range.offset)
        , end(range.offset + range.length)
    {
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;
    ~Session() { jpeg_destroy_decompress(&decompress); }

    /// False when libjpeg gave up in @p call, which must have no local object to destroy.
    template<typename Call>
    bool guarded(Call call)
    {
        if (setjmp(jump) != 0) {
            return false;
        }
        call();
        return true;
    }

    void prepare();
    void convertInks(QRgb *pixels) const;

    const InputFile &file;
    qint64 next;
    qint64 end;
    jpeg_decompress_struct decompress = {};
    jpeg_error_mgr errors = {};
    jpeg_source_mgr source = {};
    jpeg_progress_mgr progress = {};
    std::jmp_buf jump = {};
    std::array<JOCTET, chunkSize> chunk = {};
    std::vector<JSAMPLE> inks;
};

JpegStream::JpegStream(std::unique_ptr<Session> session)
    : m_session(std::move(session))
{
}

JpegStream::JpegStream(JpegStream &&) noexcept = default;
JpegStream &JpegStream::operator=(JpegStream &&) noexcept = default;
JpegStream::~JpegStream() = default;

void JpegStream::Session::prepare()
{
    decompress.err = jpeg_std_error(&errors);
    decompress.client_data = this;
    errors.error_exit = [](j_common_ptr common) {
        std::longjmp(static_cast<Session *>(common->client_data)->jump, 1);
    };
    errors.emit_message = [](j_common_ptr, int) {};
    errors.output_message = [](j_common_ptr) {};
}

std::optional<JpegStream> JpegStream::open(const InputFile &file, ByteRange range)
{
    auto session = std::make_unique<Session>(file, range);
    session->prepare();
    auto *const raw = session.get();
    const bool hasHeader = raw->guarded([raw] {
        auto &decompress = raw->decompress;
        jpeg_create_decompress(&decompress);
        decompress.client_data = raw;
        raw->source.init_source = [](j_decompress_ptr) {};
        raw->source.term_source = [](j_decompress_ptr) {};
        raw->source.resync_to_restart = jpeg_resync_to_restart;
        raw->source.fill_input_buffer = [](j_decompress_ptr info) -> boolean {
            auto *const self = static_cast<Session *>(info->client_data);
            const auto wanted = std::clamp<qint64>(self->end - self->next, 0, chunkSize);
            auto count =
                self->file.read(self->next, reinterpret_cast<char *>(self->chunk.data()), wanted);
            self->next += count;
            if (count == 0) {
                // The end came too early: a made-up end marker lets what there is be shown.
                self->chunk[0] = 0xff;
                self->chunk[1] = JPEG_EOI;
                count = 2;
            }
            self->source.next_input_byte = self->chunk.data();
            self->source.bytes_in_buffer = static_cast<size_t>(count);
            return TRUE;
        };
        raw->source.skip_input_data = [](j_decompress_ptr info, long count) {
            auto *const self = static_cast<Session *>(info->client_data);
            const auto buffered = static_cast<qint64>(self->source.bytes_in_buffer);
            const auto inBuffer = std::clamp<qint64>(count, 0, buffered);
            self->source.next_input_byte += inBuffer;
            self->source.bytes_in_buffer -= static_cast<size_t>(inBuffer);
            self->next = std::min(self->end, self->next + std::max<qint64>(count - inBuffer, 0));
        };
        decompress.src = &raw->source;
        raw->progress.progress_monitor = [](j_common_ptr common) {
            auto *const info = reinterpret_cast<j_decompress_ptr>(common);
            const auto pixels = qint64{info->image_width} * info->image_height;
            const auto allowed = std::clamp(mostScanPixels / std::max<qint64>(pixels, 1),
                                            fewestScansAllowed, mostScansAllowed);
            if (info->input_scan_number > allowed) {
                ERREXIT(info, JERR_BAD_PROGRESSION);
            }
        };
        decompress.progress = &raw->progress;
        jpeg_read_header(&decompress, TRUE);
    });
    if (!hasHeader) {
        return std::nullopt;
    }
    return JpegStream(std::move(session));
}

QSize JpegStream::size() const
{
    return {static_cast<int>(m_session->decompress.image_width),
            static_cast<int>(m_session->decompress.image_height)};
}

std::optional<QSize> JpegStream::start(int eighths, qint64 memory)
{
    auto *const session = m_session.get();
    const bool started = session->guarded([session, eighths, memory] {
        auto &decompress = session->decompress;
        decompress.scale_num = static_cast<unsigned int>(eighths);
        decompress.scale_denom = 8;
        const bool inks =
            decompress.jpeg_color_space == JCS_CMYK || decompress.jpeg_color_space == JCS_YCCK;
        decompress.out_color_space = inks ? JCS_CMYK : JCS_EXT_BGRX;
        decompress.mem->max_memory_to_use = static_cast<long>(memory);
        jpeg_start_decompress(&decompress);
    });
    if (!started) {
        return std::nullopt;
    }
    const auto &decompress = session->decompress;
    if (decompress.out_color_space == JCS_CMYK) {
        session->inks.resize(size_t{decompress.output_width} * 4);
    }
    return QSize(static_cast<int>(decompress.output_width),
                 static_cast<int>(decompress.output_height));
}

/// Plainly: what paper would show under an even light. Adobe's files store the inks inverted.
void JpegStream::Session::convertInks(QRgb *pixels) const
{
    const bool inverted = decompress.saw_Adobe_marker != FALSE;
    for (size_t column = 0; column < decompress.output_width; ++column) {
        const auto *ink = inks.data() + column * 4;
        const auto light = [&](int channel) {
            return inverted ? int{ink[channel]} : 255 - int{ink[channel]};
        };
        const auto value = [&](int channel) { return (light(channel) * light(3) + 127) / 255; };
        pixels[column] = qRgb(value(0), value(1), value(2));
    }
}

bool JpegStream::readRow(QRgb *pixels)
{
    auto *const session = m_session.get();
    auto &decompress = session->decompress;
    if (decompress.output_scanline >= decompress.output_height) {
        return false;
    }
    const bool inks = !session->inks.empty();
    JSAMPROW row = inks ? session->inks.data() : reinterpret_cast<JSAMPROW>(pixels);
    JDIMENSION count = 0;
    const bool going = session->guarded(
        [&decompress, &row, &count] { count = jpeg_read_scanlines(&decompress, &row, 1); });
    if (!going || count != 1) {
        return false;
    }
    if (inks) {
        session->convertInks(pixels);
    }
    return true;
}
