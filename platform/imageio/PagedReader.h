// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/InputFile.h"

#include <QHash>

/// Reads small pieces of a file through pages that are kept, so that structures which point to and
/// fro cost few reads. Bounded: after 1 MiB of pages every further page fails. For one thread.
class PagedReader {
public:
    explicit PagedReader(const InputFile &file);

    [[nodiscard]] const InputFile &file() const { return m_file; }

    [[nodiscard]] qint64 size() const { return m_file.size(); }

    /// Fills @p target wholly, or returns false and leaves it undefined.
    [[nodiscard]] bool read(qint64 offset, char *target, qint64 length);

    /// @p length bytes, or an empty array if they are not all there.
    [[nodiscard]] QByteArray bytes(qint64 offset, qint64 length);

private:
    bool fetch(qint64 firstPage, qint64 lastPage);

    const InputFile &m_file;
    QHash<qint64, QByteArray> m_pages;
};
