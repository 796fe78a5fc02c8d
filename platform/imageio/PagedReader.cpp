// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/PagedReader.h"

#include <algorithm>
#include <cstring>

constexpr qint64 pageSize = 4096;
/// More than any camera's file needs, little enough for a file that leads round in circles.
constexpr qint64 mostPages = 256;

PagedReader::PagedReader(const InputFile &file)
    : m_file(file)
{
}

/// Reads the run of pages in one go; those that are there already are rarely in between.
bool PagedReader::fetch(qint64 firstPage, qint64 lastPage)
{
    while (firstPage <= lastPage && m_pages.contains(firstPage)) {
        ++firstPage;
    }
    while (lastPage >= firstPage && m_pages.contains(lastPage)) {
        --lastPage;
    }
    if (firstPage > lastPage) {
        return true;
    }
    const auto count = lastPage - firstPage + 1;
    if (m_pages.size() + count > mostPages) {
        return false;
    }
    const auto run = m_file.bytes(firstPage * pageSize, count * pageSize);
    for (qint64 page = firstPage; page <= lastPage; ++page) {
        m_pages.insert(page, run.mid((page - firstPage) * pageSize, pageSize));
    }
    return true;
}

bool PagedReader::read(qint64 offset, char *target, qint64 length)
{
    if (offset < 0 || length < 0 || length > size() || offset > size() - length) {
        return false;
    }
    if (length == 0) {
        return true;
    }
    if (!fetch(offset / pageSize, (offset + length - 1) / pageSize)) {
        return false;
    }
    while (length > 0) {
        const auto page = m_pages.constFind(offset / pageSize);
        const auto from = offset % pageSize;
        const auto count = std::min(length, pageSize - from);
        if (page->size() < from + count) {
            return false;
        }
        std::memcpy(target, page->constData() + from, static_cast<size_t>(count));
        offset += count;
        target += count;
        length -= count;
    }
    return true;
}

QByteArray PagedReader::bytes(qint64 offset, qint64 length)
{
    constexpr auto longest = mostPages * pageSize;
    if (offset < 0 || length <= 0 || length > std::min(size(), longest) ||
        offset > size() - length) {
        return {};
    }
    QByteArray result(length, Qt::Uninitialized);
    return read(offset, result.data(), length) ? result : QByteArray();
}
