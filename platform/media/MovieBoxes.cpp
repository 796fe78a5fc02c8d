// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/MovieBoxes.h"

#include "platform/imageio/ByteCursor.h"

#include <algorithm>
#include <utility>

static constexpr qint64 mostTableBytes = qint64{16} * 1024 * 1024;
/// Read at once: a slow card takes a tenth of a second for it.
static constexpr qint64 mostAtOnce = qint64{1024} * 1024;

MovieBoxes::MovieBoxes(const InputFile &file, IsWanted isWanted)
    : m_reader(file)
    , m_isWanted(std::move(isWanted))
    , m_file(BoxReader::boxes(m_reader, {0, file.size()}))
    , m_movie(inside(m_file, "moov"))
{
    for (const auto &box : std::as_const(m_movie)) {
        if (box.type == "trak") {
            m_tracks.push_back(inside(box));
        }
    }
}

bool MovieBoxes::isCut()
{
    if (m_file.isEmpty()) {
        return false;
    }
    // A length of four bytes and the type, or 1 instead, the type and a length of eight.
    const auto content = m_file.constLast().content;
    const auto head = m_reader.bytes(content.offset - 8, 8);
    const bool isShort = head.endsWith(m_file.constLast().type);
    return ByteCursor(head).take(isShort ? 4 : 8) > quint64(content.length + (isShort ? 8 : 16));
}

const MovieBoxes::Boxes *MovieBoxes::shownTrack()
{
    const Boxes *first = nullptr;
    for (const auto &track : m_tracks) {
        if (!isVideo(track)) {
            continue;
        }
        if (isEnabled(track)) {
            return &track;
        }
        first = first ? first : &track;
    }
    return first;
}

bool MovieBoxes::isVideo(const Boxes &track)
{
    return content(inside(track, "mdia"), "hdlr").mid(8, 4) == "vide";
}

bool MovieBoxes::isEnabled(const Boxes &track)
{
    const auto flags = content(track, "tkhd").mid(3, 1);
    return !flags.isEmpty() && (flags.front() & 1) != 0;
}

MovieBoxes::Boxes MovieBoxes::inside(const BoxReader::Box &box)
{
    return m_isWanted() ? BoxReader::boxes(m_reader, box.content) : Boxes();
}

MovieBoxes::Boxes MovieBoxes::inside(const Boxes &boxes, QByteArrayView type)
{
    const auto box = BoxReader::find(boxes, type);
    return box ? inside(*box) : Boxes();
}

MovieBoxes::Boxes MovieBoxes::tables(const Boxes &track)
{
    return inside(inside(inside(track, "mdia"), "minf"), "stbl");
}

QByteArray MovieBoxes::content(const Boxes &boxes, QByteArrayView type)
{
    const auto box = BoxReader::find(boxes, type);
    if (!box || box->content.length > mostTableBytes) {
        return {};
    }
    QByteArray result;
    result.reserve(box->content.length);
    while (result.size() < box->content.length) {
        const auto length = std::min(mostAtOnce, box->content.length - result.size());
        const auto piece = m_isWanted()
                               ? m_reader.file().bytes(box->content.offset + result.size(), length)
                               : QByteArray();
        result += piece;
        if (piece.size() < length) {
            break;
        }
    }
    return result;
}

QByteArray MovieBoxes::beginning(const BoxReader::Box &box, qint64 length)
{
    return m_isWanted() ? m_reader.bytes(box.content.offset, std::min(length, box.content.length))
                        : QByteArray();
}
