// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"

#include <libraw/libraw_datastream.h>

#include <array>

/// Lets LibRaw read an open file: a file that it opened itself would have its access time changed.
/// Holds one small block in memory. Bounded: after so many bytes everything fails as if the file
/// ended, as damaged files lead LibRaw round in circles, and after so many leaps, which some of
/// those circles consist of, the next one throws a std::exception. For one thread; the file must
/// outlive it.
class LibRawStream final : public LibRaw_abstract_datastream {
public:
    static constexpr qint64 mostForProperties = qint64{64} * 1024 * 1024;
    /// A file has some hundreds in its directories, and one for each tile or row.
    static constexpr int mostLeaps = 1'000'000;

    explicit LibRawStream(const InputFile &file, qint64 mostBytes = mostForProperties);

    int valid() override { return 1; }

    int read(void *target, size_t size, size_t count) override;
    int seek(INT64 offset, int origin) override;

    INT64 tell() override { return m_at; }

    INT64 size() override { return m_file.size(); }

    int get_char() override;
    /// As fgets() does: up to and with the line's end, at most @p size - 1 characters.
    char *gets(char *target, int size) override;
    int scanf_one(const char *format, void *value) override;
    int eof() override;

    /// For pictures in JPEG 2000, which are not asked for.
    void *make_jas_stream() override { return nullptr; }

private:
    /// The bytes from the current position to the end of its block; empty where nothing can be
    /// read.
    [[nodiscard]] QByteArrayView available();

    const InputFile &m_file;
    INT64 m_at = 0;
    std::array<char, 16 * 1024> m_block;
    INT64 m_blockAt = 0;
    INT64 m_blockSize = 0;
    INT64 m_bytesLeft;
    int m_leapsLeft = mostLeaps;
};
