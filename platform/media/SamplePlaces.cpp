// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/SamplePlaces.h"

#include "platform/imageio/ByteCursor.h"

namespace SamplePlaces {

namespace {

struct Run {
    quint64 firstChunk = 0; ///< counted from 1
    quint64 samples = 0;    ///< of each chunk
};

std::vector<Run> runs(const QByteArray &table)
{
    std::vector<Run> result;
    ByteCursor cursor(table);
    cursor.skip(4);
    for (auto left = cursor.take(4); left > 0; --left) {
        const auto first = cursor.take(4);
        const auto samples = cursor.take(4);
        cursor.skip(4);
        if (cursor.failed()) {
            break;
        }
        result.push_back({.firstChunk = first, .samples = samples});
    }
    return result;
}

} // namespace

size_t countInside(MovieBoxes &movie, const MovieBoxes::Boxes &tables, size_t samples)
{
    const auto fileSize = quint64(movie.fileSize());
    const auto perChunk = runs(movie.content(tables, "stsc"));
    const bool areLong = BoxReader::find(tables, "co64").has_value();
    ByteCursor chunks(movie.content(tables, areLong ? "co64" : "stco"));
    ByteCursor sizes(movie.content(tables, "stsz"));
    chunks.skip(4);
    sizes.skip(4);
    const auto chunkCount = chunks.take(4);
    const auto oneSize = sizes.take(4);
    sizes.skip(4);
    size_t sample = 0;
    size_t run = 0;
    for (quint64 chunk = 1; chunk <= chunkCount && sample < samples; ++chunk) {
        auto offset = chunks.take(areLong ? 8 : 4);
        while (run + 1 < perChunk.size() && perChunk[run + 1].firstChunk <= chunk) {
            ++run;
        }
        if (chunks.failed() || run >= perChunk.size()) {
            return samples;
        }
        for (auto left = perChunk[run].samples; left > 0 && sample < samples; --left, ++sample) {
            const auto size = oneSize > 0 ? oneSize : sizes.take(4);
            if (sizes.failed()) {
                return samples;
            }
            if (offset > fileSize || size > fileSize - offset) {
                return sample;
            }
            offset += size;
        }
    }
    return samples;
}

} // namespace SamplePlaces
