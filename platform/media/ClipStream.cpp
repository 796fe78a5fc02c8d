// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/ClipStream.h"

#include "platform/media/ClipFile.h"

#include <mpv/stream_cb.h>

#include <atomic>

namespace ClipStream {

namespace {

/// One reader of the file; for one thread but for its cancellation.
struct Stream {
    ClipFile &file;
    int64_t position = 0;
    std::atomic_bool isCancelled = false;
};

int64_t read(void *cookie, char *buffer, uint64_t length)
{
    auto *stream = static_cast<Stream *>(cookie);
    const auto count = stream->isCancelled
                           ? std::nullopt
                           : stream->file.read(stream->position, buffer, qint64(length));
    stream->position += count.value_or(0);
    return count.value_or(-1);
}

int64_t seek(void *cookie, int64_t offset)
{
    auto *stream = static_cast<Stream *>(cookie);
    if (offset < 0) {
        return MPV_ERROR_GENERIC;
    }
    stream->position = offset;
    return offset;
}

int64_t size(void *cookie)
{
    const auto file = static_cast<Stream *>(cookie)->file.file();
    return file ? file->size() : int64_t{MPV_ERROR_GENERIC};
}

void cancel(void *cookie)
{
    static_cast<Stream *>(cookie)->isCancelled = true;
}

void close(void *cookie)
{
    delete static_cast<Stream *>(cookie);
}

int open(void *file, char * /*uri*/, mpv_stream_cb_info *info)
{
    *info = {.cookie = new Stream{.file = *static_cast<ClipFile *>(file)},
             .read_fn = read,
             .seek_fn = seek,
             .size_fn = size,
             .close_fn = close,
             .cancel_fn = cancel};
    return 0;
}

} // namespace

bool offer(mpv_handle *handle, ClipFile &file)
{
    return mpv_stream_cb_add_ro(handle, "kestle", &file, open) >= 0;
}

} // namespace ClipStream
