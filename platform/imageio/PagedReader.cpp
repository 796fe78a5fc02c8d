// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/PagedReader.h"

#include <algorithm>
#include <cstring>

constexpr qint64 pageSize = 4096;
/// More than any camera's file needs, little enough for a file that leads round in circles.
constexpr qint64 mostPages = 256;
constexpr auto mostBytes = mostPages * pageSize;

/// Clearing the head would cost as much as a read.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
PagedReader::PagedReader(const InputFile &file)
    : m_file(file)
{
}

bool PagedReader::isInside(qint64 offset, qint64 length) const
{
    return offset >= 0 && length >= 0 && length <= std::min(size(), mostBytes) &&
           offset <= size() - length;
}

/// Whether the stretch, which is inside the file, lies in the head; reads that the first time.
bool PagedReader::isInHead(qint64 offset, qint64 length)
{
    if (offset >= headSize) {
        return false;
    }
    if (m_headLength < 0) {
        m_headLength = m_file.read(0, m_head.data(), headSize);
    }
    return offset + length <= m_headLength;
}

const char *PagedReader::inPage(qint64 offset, qint64 length)
{
    const auto number = offset / pageSize;
    const auto from = offset % pageSize;
    if (from + length > pageSize || !fetch(number, number)) {
        return nullptr;
    }
    const auto page = m_pages.constFind(number);
    return page->size() < from + length ? nullptr : page->constData() + from;
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
    if (offset < headSize) {
        const auto count = std::min(length, headSize - offset);
        if (!isInHead(offset, count)) {
            return false;
        }
        std::memcpy(target, m_head.data() + offset, static_cast<size_t>(count));
        return read(offset + count, target + count, length - count);
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
    if (length == 0 || !isInside(offset, length)) {
        return {};
    }
    QByteArray result(length, Qt::Uninitialized);
    return read(offset, result.data(), length) ? result : QByteArray();
}

QByteArrayView PagedReader::view(qint64 offset, qint64 length)
{
    if (length == 0 || !isInside(offset, length)) {
        return {};
    }
    if (isInHead(offset, length)) {
        return {m_head.data() + offset, length};
    }
    if (offset >= headSize) {
        if (const auto *data = inPage(offset, length)) {
            return {data, length};
        }
    }
    m_gathered = bytes(offset, length);
    return m_gathered;
}
