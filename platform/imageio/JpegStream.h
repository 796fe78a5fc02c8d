// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/InputFile.h"

#include <QImage>
#include <QSize>

#include <memory>
#include <optional>

/// The rows of a JPEG stream within a file, decoded one after the other. Never holds the stream or
/// the picture as a whole, unless the stream is progressive. For one thread.
class JpegStream {
public:
    /// Nothing when the stream has no header that can be decoded. @p file must outlive this.
    [[nodiscard]] static std::optional<JpegStream> open(const InputFile &file, ByteRange range);

    JpegStream(JpegStream &&) noexcept;
    JpegStream &operator=(JpegStream &&) noexcept;
    ~JpegStream();

    /// Pixels, as stored.
    [[nodiscard]] QSize size() const;

    /// Begins to decode at @p eighths of the size: 1, 2, 4 or 8, the scales at which the library
    /// has fast code. May use up to @p memory bytes. Returns the size the rows will have, rounded
    /// up; nothing on failure.
    [[nodiscard]] std::optional<QSize> start(int eighths, qint64 memory);

    /// The next row. What damage has destroyed is grey. False when no further row can be had.
    [[nodiscard]] bool readRow(QRgb *pixels);

private:
    struct Session;
    explicit JpegStream(std::unique_ptr<Session> session);

    std::unique_ptr<Session> m_session;
};
