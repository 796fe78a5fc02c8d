// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/LibRawStream.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <stdexcept>

static bool isSpace(int character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

LibRawStream::LibRawStream(const InputFile &file, qint64 mostBytes)
    : m_file(file)
    , m_bytesLeft(mostBytes)
{
}

QByteArrayView LibRawStream::available()
{
    if (m_at < m_blockAt || m_at >= m_blockAt + m_blockSize) {
        const auto blockLength = static_cast<INT64>(m_block.size());
        m_blockAt = m_at - m_at % blockLength;
        m_blockSize = m_bytesLeft > 0 ? m_file.read(m_blockAt, m_block.data(), blockLength) : 0;
        m_bytesLeft -= m_blockSize;
    }
    const auto from = m_at - m_blockAt;
    return from < m_blockSize ? QByteArrayView(m_block.data() + from, m_blockSize - from)
                              : QByteArrayView();
}

int LibRawStream::read(void *target, size_t size, size_t count)
{
    if (size == 0 || count > std::numeric_limits<int>::max() / size) {
        return 0;
    }
    const auto wanted = static_cast<qsizetype>(size * count);
    qsizetype done = 0;
    while (done < wanted) {
        const auto piece = available().first(std::min(available().size(), wanted - done));
        if (piece.isEmpty()) {
            break;
        }
        std::memcpy(static_cast<char *>(target) + done, piece.data(),
                    static_cast<size_t>(piece.size()));
        done += piece.size();
        m_at += piece.size();
    }
    return static_cast<int>(done / static_cast<qsizetype>(size));
}

int LibRawStream::seek(INT64 offset, int origin)
{
    // Some of LibRaw's loops end at a place that a damaged file puts exabytes behind its end.
    if (--m_leapsLeft < 0) {
        throw std::runtime_error("a file that leads round in circles");
    }
    const INT64 base = origin == SEEK_CUR ? m_at : origin == SEEK_END ? size() : 0;
    // LibRaw does not look at the answer; at the end of the file every read fails.
    m_at = std::clamp<INT64>(offset, -base, size() - base) + base;
    return 0;
}

int LibRawStream::get_char()
{
    const auto rest = available();
    if (rest.isEmpty()) {
        return EOF;
    }
    ++m_at;
    return static_cast<uchar>(rest.front());
}

char *LibRawStream::gets(char *target, int size)
{
    int length = 0;
    while (length < size - 1) {
        const int character = get_char();
        if (character == EOF) {
            break;
        }
        target[length++] = static_cast<char>(character);
        if (character == '\n') {
            break;
        }
    }
    if (size > 0) {
        target[length] = '\0';
    }
    return length > 0 ? target : nullptr;
}

int LibRawStream::scanf_one(const char *format, void *value)
{
    std::array<char, 25> word = {}; // no number is longer
    int character = get_char();
    while (isSpace(character)) {
        character = get_char();
    }
    size_t length = 0;
    while (character != EOF && !isSpace(character) && length + 1 < word.size()) {
        word.at(length++) = static_cast<char>(character);
        character = get_char();
    }
    if (character != EOF) {
        --m_at; // what ends the word is not part of it
    }
    return std::sscanf(word.data(), format, value);
}

int LibRawStream::eof()
{
    return available().isEmpty() ? 1 : 0;
}
