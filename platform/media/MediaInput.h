// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"

#include <chrono>
#include <cstdint>

struct AVFormatContext;
struct AVIOContext;

/// A clip's file opened by libavformat through a descriptor of ours, so that nothing in the file
/// can name another file or a host. For one thread.
class MediaInput {
public:
    /// Reads the header; see isOpen(). Every operation on the context fails after @p time.
    MediaInput(InputFile file, std::chrono::milliseconds time);
    MediaInput(const MediaInput &) = delete;
    MediaInput &operator=(const MediaInput &) = delete;
    ~MediaInput();

    [[nodiscard]] bool isOpen() const { return m_context != nullptr; }

    /// Owned by this. Null unless isOpen().
    [[nodiscard]] AVFormatContext *context() const { return m_context; }

private:
    static int readPacket(void *self, unsigned char *buffer, int size);
    static int64_t seek(void *self, int64_t offset, int whence);
    static int isLate(void *self);

    InputFile m_file;
    std::chrono::steady_clock::time_point m_deadline;
    qint64 m_position = 0;
    AVIOContext *m_io = nullptr;
    AVFormatContext *m_context = nullptr;
};
