// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/TrackMatrix.h"

#include "platform/imageio/ByteCursor.h"
#include "platform/media/MovieBoxes.h"

#include <optional>

namespace TrackMatrix {

namespace {

using Matrix = PictureTurn::Matrix;

/// Behind @p between bytes that follow a box's times.
std::optional<Matrix> matrix(const QByteArray &header, qsizetype times, qsizetype between)
{
    ByteCursor cursor(header);
    const bool isLong = cursor.take(1) == 1;
    cursor.skip(3 + (isLong ? 2 : 1) * times + between);
    Matrix result = {};
    for (auto &number : result) {
        number = static_cast<int32_t>(cursor.take(4));
    }
    return cursor.failed() ? std::nullopt : std::optional(result);
}

/// The first, and then the second. Their third columns count in other units.
Matrix product(const Matrix &first, const Matrix &second)
{
    constexpr int places[] = {16, 16, 30};
    Matrix result = {};
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column) {
            int64_t sum = 0;
            for (size_t i = 0; i < 3; ++i) {
                sum += int64_t{first[row * 3 + i]} * second[i * 3 + column] >> places[i];
            }
            result[row * 3 + column] = static_cast<int32_t>(sum);
        }
    }
    return result;
}

} // namespace

PictureTurn turn(MovieBoxes &movie)
{
    const auto *track = movie.shownTrack();
    // Three times of 4 or 8 bytes each, and what both forms have beside them.
    const auto ofTrack =
        track ? matrix(movie.content(*track, "tkhd"), 3 * 4, 4 + 4 + 8 + 4 * 2) : std::nullopt;
    if (!ofTrack) {
        return {};
    }
    const auto ofMovie = matrix(movie.content(movie.movie(), "mvhd"), 3 * 4, 4 + 4 + 2 + 2 + 8);
    return PictureTurn::of(ofMovie ? product(*ofTrack, *ofMovie) : *ofTrack);
}

} // namespace TrackMatrix
