// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/SampleCount.h"

#include "platform/imageio/ByteCursor.h"
#include "platform/media/MovieBoxes.h"

#include <algorithm>

namespace SampleCount {

namespace {

using Boxes = MovieBoxes::Boxes;

/// Of all tracks: hours of the quickest frames that cameras take, with sound and the camera's
/// moves.
constexpr double mostSamples = 4'000'000;
/// Plain sound is read in pieces of so many samples.
constexpr quint64 soundAtOnce = 1024;

/// How many of something a box begins with, behind @p skipped bytes.
double headCount(MovieBoxes &movie, const Boxes &boxes, QByteArrayView type, qint64 skipped)
{
    const auto box = BoxReader::find(boxes, type);
    if (!box) {
        return 0;
    }
    ByteCursor cursor(movie.beginning(*box, skipped + 4));
    cursor.skip(skipped);
    return double(cursor.take(4));
}

struct Times {
    double count = 0;
    bool areOfPlainSound = false; ///< one run, a unit of time for each sample
};

/// ISO 14496-12, 8.6.1.2.
Times times(const QByteArray &table)
{
    Times result;
    ByteCursor cursor(table);
    cursor.skip(4);
    const auto runs = cursor.take(4);
    for (auto left = runs; left > 0; --left) {
        const auto count = cursor.take(4);
        const auto length = cursor.take(4);
        if (cursor.failed()) {
            break;
        }
        result.count += double(count);
        result.areOfPlainSound = runs == 1 && length == 1;
    }
    return result;
}

/// The pieces in which plain sound is read, by the number of samples of each chunk (8.7.4).
double pieces(const QByteArray &table, double chunks)
{
    double result = chunks;
    ByteCursor cursor(table);
    cursor.skip(4);
    double from = 0;
    double pieces = 0;
    for (auto left = cursor.take(4); left > 0; --left) {
        const auto first = double(cursor.take(4)) - 1;
        const auto samples = cursor.take(4);
        cursor.skip(4);
        if (cursor.failed()) {
            break;
        }
        result += std::max(0.0, std::min(first, chunks) - from) * pieces;
        from = first;
        const auto whole = samples / soundAtOnce;
        pieces = double(whole);
    }
    return result + std::max(0.0, chunks - from) * pieces;
}

/// How often the samples are gone through: once for each stretch of the track that is shown
/// (8.6.6).
double stretches(const QByteArray &editList)
{
    ByteCursor cursor(editList);
    const int size = cursor.take(1) == 1 ? 8 : 4;
    cursor.skip(3);
    double result = 0;
    for (auto left = cursor.take(4); left > 0 && !cursor.failed(); --left) {
        cursor.skip(2 * size + 4);
        result += cursor.failed() ? 0 : 1;
    }
    return std::max(1.0, result);
}

double ofTrack(MovieBoxes &movie, const Boxes &track)
{
    const auto tables = movie.tables(track);
    const auto told = times(movie.content(tables, "stts"));
    const double chunks =
        std::max(headCount(movie, tables, "stco", 4), headCount(movie, tables, "co64", 4));
    const double samples = told.areOfPlainSound
                               ? pieces(movie.content(tables, "stsc"), chunks)
                               : std::max({told.count, headCount(movie, tables, "stsz", 8),
                                           headCount(movie, tables, "stz2", 8)});
    return samples * stretches(movie.content(movie.inside(track, "edts"), "elst"));
}

/// Samples of a fragment of which nothing is told, and which cost the file nothing (8.8.8).
double untold(MovieBoxes &movie, const Boxes &fragment)
{
    constexpr quint32 toldOfEach = 0xF00;
    double result = 0;
    for (const auto &track : fragment) {
        if (track.type != "traf") {
            continue;
        }
        for (const auto &run : movie.inside(track)) {
            if (run.type == "trun") {
                ByteCursor cursor(movie.beginning(run, 8));
                const auto flags = cursor.take(4);
                result += (flags & toldOfEach) == 0 ? double(cursor.take(4)) : 0;
            }
        }
    }
    return result;
}

} // namespace

bool isMonstrous(MovieBoxes &movie)
{
    double samples = 0;
    for (const auto &track : movie.tracks()) {
        samples += ofTrack(movie, track);
    }
    for (const auto &box : movie.file()) {
        if (box.type == "moof") {
            samples += untold(movie, movie.inside(box));
        }
    }
    return samples > mostSamples;
}

} // namespace SampleCount
