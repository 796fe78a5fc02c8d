// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"

#include <memory>

#include <tiffio.h>

/// libtiff's handle on an open file. Says nothing about damage, maps nothing, and refuses to
/// allocate more than a bound at once. Bounded: after twice the file's size every read fails, as
/// damaged files name the same stretch again and again. For one thread; the file must outlive it.
class TiffFile {
public:
    /// At the directory whose place in the file is @p directory. Null when it cannot be read.
    [[nodiscard]] static std::unique_ptr<TiffFile> open(const InputFile &file, qint64 directory,
                                                        qint64 mostAtOnce);

    TiffFile(const TiffFile &) = delete;
    TiffFile &operator=(const TiffFile &) = delete;
    ~TiffFile();

    [[nodiscard]] TIFF *handle() const { return m_handle; }

private:
    explicit TiffFile(const InputFile &file);

    const InputFile &m_file;
    toff_t m_at = 0;
    qint64 m_bytesLeft;
    TIFF *m_handle = nullptr;
};
