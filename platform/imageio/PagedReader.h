// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"

#include <QHash>

#include <array>

/// Reads small pieces of a file through pages that are kept, so that structures which point to and
/// fro cost few reads. The beginning of the file, where cameras keep what they say, is read at
/// once. Bounded: after 1 MiB of pages every further page fails. For one thread.
class PagedReader {
public:
    explicit PagedReader(const InputFile &file);

    PagedReader(const PagedReader &) = delete;
    PagedReader &operator=(const PagedReader &) = delete;

    [[nodiscard]] const InputFile &file() const { return m_file; }

    [[nodiscard]] qint64 size() const { return m_file.size(); }

    /// Fills @p target wholly, or returns false and leaves it undefined.
    [[nodiscard]] bool read(qint64 offset, char *target, qint64 length);

    /// @p length bytes, or an empty array if they are not all there.
    [[nodiscard]] QByteArray bytes(qint64 offset, qint64 length);

    /// The same without a copy where possible. Valid until the next call of any operation.
    [[nodiscard]] QByteArrayView view(qint64 offset, qint64 length);

private:
    [[nodiscard]] bool isInside(qint64 offset, qint64 length) const;
    bool isInHead(qint64 offset, qint64 length);
    /// Where the stretch lies in the page that holds it, or null.
    const char *inPage(qint64 offset, qint64 length);
    bool fetch(qint64 firstPage, qint64 lastPage);

    static constexpr qint64 headSize = qint64{16} * 1024;

    const InputFile &m_file;
    std::array<char, headSize> m_head; ///< of which only the first m_headLength bytes are set
    qint64 m_headLength = -1;          ///< negative until the head was read
    QHash<qint64, QByteArray> m_pages; ///< behind the head
    QByteArray m_gathered;             ///< of what the last view showed
};
