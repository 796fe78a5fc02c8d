// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/SampleTable.h"

#include "platform/imageio/ByteCursor.h"
#include "platform/media/MovieBoxes.h"
#include "platform/media/SamplePlaces.h"

#include <algorithm>

namespace SampleTable {

namespace {

using Boxes = MovieBoxes::Boxes;

/// Hours of the quickest frames that cameras take.
constexpr qint64 mostFrames = 2'000'000;

/// Units per second, of a "mvhd" or "mdhd" box.
quint32 timescale(const QByteArray &header)
{
    ByteCursor cursor(header);
    const auto version = cursor.take(1);
    cursor.skip(version == 1 ? 3 + 16 : 3 + 8);
    return static_cast<quint32>(cursor.take(4));
}

/// The stretch of a track that is shown, in the track's units.
struct Stretch {
    qint64 begin = 0;
    qint64 length = -1; ///< to the end of the track if negative
};

/// In a track's units; no more fit into a number.
constexpr double longestStretch = 9e18;

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
        if (shown || cursor.failed() || double(begin) > longestStretch / 2) {
            return std::nullopt;
        }
        const double length = double(duration) / movieScale * trackScale;
        const bool isBounded = duration != 0 && length < longestStretch;
        shown = Stretch{.begin = begin, .length = isBounded ? qint64(length + 0.5) : -1};
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

std::optional<Frames> framesOf(MovieBoxes &movie, const Boxes &track)
{
    const auto table = movie.tables(track);
    const auto movieScale = timescale(movie.content(movie.movie(), "mvhd"));
    const auto trackScale = timescale(movie.content(movie.inside(track, "mdia"), "mdhd"));
    const auto edits = movie.content(movie.inside(track, "edts"), "elst");
    if (trackScale == 0 || movieScale == 0) {
        return std::nullopt;
    }
    const auto stretch = shownStretch(edits, movieScale, trackScale);
    const auto decoded = decodingTimes(movie.content(table, "stts"));
    if (!stretch || !decoded || decoded->empty()) {
        return std::nullopt;
    }
    const auto delay = delays(movie.content(table, "ctts"), decoded->size());
    const auto there =
        movie.isCut() ? SamplePlaces::countInside(movie, table, decoded->size()) : decoded->size();
    Frames result;
    std::vector<double> missing;
    for (size_t i = 0; i < decoded->size(); ++i) {
        const auto time = (*decoded)[i] + delay[i] - stretch->begin;
        if (time >= 0 && (stretch->length < 0 || time < stretch->length)) {
            (i < there ? result.times : missing).push_back(double(time) / trackScale);
        }
    }
    if (result.times.empty()) {
        return std::nullopt;
    }
    const double last = std::ranges::max(result.times);
    for (const double time : missing) {
        if (time > last) {
            result.end = std::min(time, result.end.value_or(time));
        }
    }
    return result;
}

} // namespace

std::optional<Frames> frames(MovieBoxes &movie)
{
    const auto *track = movie.shownTrack();
    return track && !BoxReader::find(movie.movie(), "mvex") ? framesOf(movie, *track)
                                                            : std::nullopt;
}

} // namespace SampleTable
