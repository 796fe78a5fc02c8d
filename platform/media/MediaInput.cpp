// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MediaInput.h"

#include "platform/media/MediaLimits.h"

#include <utility>

extern "C" {
#include <libavformat/avformat.h>
}

namespace {

constexpr int bufferSize = 32 * 1024;
constexpr int64_t mostProbedBytes = 4 * 1024 * 1024;
constexpr int64_t mostProbedTime = 2 * AV_TIME_BASE;

} // namespace

MediaInput::MediaInput(InputFile file, std::chrono::milliseconds time)
    : m_file(std::move(file))
    , m_deadline(std::chrono::steady_clock::now() + time)
{
    auto *buffer = static_cast<unsigned char *>(av_malloc(bufferSize));
    auto *context = avformat_alloc_context();
    if (buffer != nullptr) {
        m_io = avio_alloc_context(buffer, bufferSize, 0, this, readPacket, nullptr, seek);
    }
    if (m_io == nullptr || context == nullptr) {
        av_free(m_io == nullptr ? buffer : nullptr);
        avformat_free_context(context);
        return;
    }
    context->pb = m_io;
    context->flags |= AVFMT_FLAG_CUSTOM_IO;
    context->format_whitelist = av_strdup(MediaLimits::formats);
    context->protocol_whitelist = av_strdup("none");
    context->max_streams = MediaLimits::mostTracks;
    context->probesize = mostProbedBytes;
    context->max_analyze_duration = mostProbedTime;
    context->interrupt_callback = {isLate, this};
    // On failure the context is freed by the call.
    if (avformat_open_input(&context, "", nullptr, nullptr) == 0) {
        m_context = context;
    }
}

MediaInput::~MediaInput()
{
    avformat_close_input(&m_context);
    if (m_io != nullptr) {
        av_freep(&m_io->buffer);
    }
    avio_context_free(&m_io);
}

int MediaInput::readPacket(void *self, unsigned char *buffer, int size)
{
    auto *input = static_cast<MediaInput *>(self);
    if (isLate(self) != 0) {
        return AVERROR_EXIT;
    }
    const auto count =
        input->m_file.read(input->m_position, reinterpret_cast<char *>(buffer), size);
    input->m_position += count;
    return count > 0 ? static_cast<int>(count) : AVERROR_EOF;
}

int64_t MediaInput::seek(void *self, int64_t offset, int whence)
{
    auto *input = static_cast<MediaInput *>(self);
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return input->m_file.size();
    case SEEK_SET:
        break;
    case SEEK_CUR:
        offset += input->m_position;
        break;
    case SEEK_END:
        offset += input->m_file.size();
        break;
    default:
        return AVERROR(EINVAL);
    }
    if (offset < 0) {
        return AVERROR(EINVAL);
    }
    input->m_position = offset;
    return offset;
}

int MediaInput::isLate(void *self)
{
    return std::chrono::steady_clock::now() > static_cast<MediaInput *>(self)->m_deadline ? 1 : 0;
}
