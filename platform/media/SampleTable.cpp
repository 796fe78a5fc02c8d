// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/SampleTable.h"

#include "platform/imageio/BoxReader.h"
#include "platform/imageio/ByteCursor.h"

namespace SampleTable {

namespace {

using Boxes = QList<BoxReader::Box>;

/// Hours of the quickest frames that cameras take.
constexpr qint64 mostFrames = 2'000'000;
constexpr qint64 mostTableBytes = 16 * 1024 * 1024;

/// The boxes inside the first of @p boxes of a type.
Boxes inside(PagedReader &reader, const Boxes &boxes, QByteArrayView type)
{
    const auto box = BoxReader::find(boxes, type);
    return box ? BoxReader::boxes(reader, box->content) : Boxes();
}

/// What is in the first of @p boxes of a type; empty when there is none.
QByteArray content(PagedReader &reader, const Boxes &boxes, QByteArrayView type)
{
    const auto box = BoxReader::find(boxes, type);
    return box && box->content.length <= mostTableBytes
               ? reader.file().bytes(box->content.offset, box->content.length)
               : QByteArray();
}

/// Units per second, of a "mvhd" or "mdhd" box.
quint32 timescale(const QByteArray &header)
{
    ByteCursor cursor(header);
    const auto version = cursor.take(1);
    cursor.skip(version == 1 ? 3 + 16 : 3 + 8);
    return static_cast<quint32>(cursor.take(4));
}

bool isVideo(const QByteArray &handler)
{
    return handler.mid(8, 4) == "vide";
}

/// The stretch of a track that is shown, in the track's units.
struct Stretch {
    qint64 begin = 0;
    qint64 length = -1; ///< to the end of the track if negative
};

/// Nothing when there are several.
std::optional<Stretch> shownStretch(const QByteArray &editList, quint32 movieScale,
                                    quint32 trackScale)
{
    if (editList.isEmpty()) {
        return Stretch();
    }
    ByteCursor cursor(editList);
    const int size = cursor.take(1) == 1 ? 8 : 4;
    cursor.skip(3);
    std::optional<Stretch> shown;
    for (auto left = cursor.take(4); left > 0 && !cursor.failed(); --left) {
        const auto duration = cursor.take(size);
        const auto raw = cursor.take(size);
        const auto begin = size == 8 ? static_cast<qint64>(raw) : static_cast<qint32>(raw);
        cursor.skip(4);
        if (begin < 0) {
            continue; // nothing is shown for a while
        }
        if (shown || cursor.failed()) {
            return std::nullopt;
        }
        const double length = double(duration) / movieScale * trackScale;
        shown = Stretch{.begin = begin, .length = duration == 0 ? -1 : qint64(length + 0.5)};
    }
    return shown;
}

/// How much later than it is decoded each frame is shown (ISO 14496-12, 8.6.1.3).
std::vector<qint64> delays(const QByteArray &table, size_t frames)
{
    std::vector<qint64> result(frames, 0);
    ByteCursor cursor(table);
    cursor.skip(4);
    size_t at = 0;
    for (auto left = cursor.take(4); left > 0 && !cursor.failed(); --left) {
        const auto count = cursor.take(4);
        const auto delay = static_cast<qint32>(cursor.take(4)); // of both versions, in practice
        for (quint64 i = 0; i < count && at < frames && !cursor.failed(); ++i) {
            result[at++] = delay;
        }
    }
    return result;
}

/// When each frame is decoded (ISO 14496-12, 8.6.1.2); nothing when there are too many.
std::optional<std::vector<qint64>> decodingTimes(const QByteArray &table)
{
    std::vector<qint64> result;
    ByteCursor cursor(table);
    cursor.skip(4);
    qint64 time = 0;
    for (auto left = cursor.take(4); left > 0; --left) {
        const auto count = static_cast<qint64>(cursor.take(4));
        const auto delta = static_cast<qint64>(cursor.take(4));
        if (cursor.failed() || count > mostFrames - qint64(result.size())) {
            return std::nullopt;
        }
        for (qint64 i = 0; i < count; ++i, time += delta) {
            result.push_back(time);
        }
    }
    return result;
}

std::optional<std::vector<double>> frameTimesOf(PagedReader &reader, const Boxes &track,
                                                quint32 movieScale)
{
    const auto media = inside(reader, track, "mdia");
    const auto table = inside(reader, inside(reader, media, "minf"), "stbl");
    const auto trackScale = timescale(content(reader, media, "mdhd"));
    const auto edits = content(reader, inside(reader, track, "edts"), "elst");
    if (trackScale == 0 || movieScale == 0) {
        return std::nullopt;
    }
    const auto stretch = shownStretch(edits, movieScale, trackScale);
    const auto decoded = decodingTimes(content(reader, table, "stts"));
    if (!stretch || !decoded || decoded->empty()) {
        return std::nullopt;
    }
    const auto delay = delays(content(reader, table, "ctts"), decoded->size());
    std::vector<double> result;
    result.reserve(decoded->size());
    for (size_t i = 0; i < decoded->size(); ++i) {
        const auto time = (*decoded)[i] + delay[i] - stretch->begin;
        if (time >= 0 && (stretch->length < 0 || time < stretch->length)) {
            result.push_back(double(time) / trackScale);
        }
    }
    return result.empty() ? std::nullopt : std::optional(std::move(result));
}

} // namespace

std::optional<std::vector<double>> frameTimes(const InputFile &file)
{
    PagedReader reader(file);
    const auto movie = inside(reader, BoxReader::boxes(reader, {0, file.size()}), "moov");
    if (movie.isEmpty() || BoxReader::find(movie, "mvex")) {
        return std::nullopt;
    }
    const auto movieScale = timescale(content(reader, movie, "mvhd"));
    for (const auto &box : movie) {
        if (box.type != "trak") {
            continue;
        }
        const auto track = BoxReader::boxes(reader, box.content);
        if (isVideo(content(reader, inside(reader, track, "mdia"), "hdlr"))) {
            return frameTimesOf(reader, track, movieScale);
        }
    }
    return std::nullopt;
}

} // namespace SampleTable
