// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffFile.h"

#include <cstdarg>
#include <cstdio>

/// For directories, which are read several times.
constexpr qint64 bytesBeside = qint64{16} * 1024 * 1024;

TiffFile::TiffFile(const InputFile &file)
    : m_file(file)
    , m_bytesLeft(2 * file.size() + bytesBeside)
{
}

TiffFile::~TiffFile()
{
    if (m_handle != nullptr) {
        TIFFClose(m_handle);
    }
}

std::unique_ptr<TiffFile> TiffFile::open(const InputFile &file, qint64 directory, qint64 mostAtOnce)
{
    auto tiff = std::unique_ptr<TiffFile>(new TiffFile(file));

    const TIFFReadWriteProc read = [](thandle_t self, void *target, tmsize_t length) -> tmsize_t {
        auto *const at = static_cast<TiffFile *>(self);
        if (at->m_bytesLeft < length) {
            return 0;
        }
        const auto count =
            at->m_file.read(static_cast<qint64>(at->m_at), static_cast<char *>(target), length);
        at->m_at += static_cast<toff_t>(count);
        at->m_bytesLeft -= count;
        return count;
    };
    const TIFFReadWriteProc write = [](thandle_t, void *, tmsize_t) -> tmsize_t { return 0; };
    const TIFFSeekProc seek = [](thandle_t self, toff_t offset, int origin) -> toff_t {
        auto *const at = static_cast<TiffFile *>(self);
        const auto size = static_cast<toff_t>(at->m_file.size());
        at->m_at = offset + (origin == SEEK_CUR ? at->m_at : origin == SEEK_END ? size : 0);
        return at->m_at;
    };
    const TIFFCloseProc close = [](thandle_t) { return 0; };
    const TIFFSizeProc size = [](thandle_t self) {
        return static_cast<toff_t>(static_cast<TiffFile *>(self)->m_file.size());
    };
    const TIFFErrorHandlerExtR silent = [](TIFF *, void *, const char *, const char *, va_list) {
        return 1; // handled: nobody else is asked
    };

    auto *const options = TIFFOpenOptionsAlloc();
    if (options == nullptr) {
        return nullptr;
    }
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, mostAtOnce);
    TIFFOpenOptionsSetErrorHandlerExtR(options, silent, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, silent, nullptr);
    // h: only the header; m: a mapping of a card that is pulled would end the program.
    tiff->m_handle = TIFFClientOpenExt("", "rhm", tiff.get(), read, write, seek, close, size,
                                       nullptr, nullptr, options);
    TIFFOpenOptionsFree(options);
    if (tiff->m_handle == nullptr ||
        TIFFSetSubDirectory(tiff->m_handle, static_cast<toff_t>(directory)) == 0) {
        return nullptr;
    }
    return tiff;
}
