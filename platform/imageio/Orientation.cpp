// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/Orientation.h"

#include <array>

namespace {

/// What a code does to a stored picture: left and right exchanged first, then turned clockwise.
struct Turn {
    bool mirrored;
    int quarters;

    bool operator==(const Turn &) const = default;
};

/// By code; the place 0 stands for a code that does not exist.
constexpr std::array<Turn, 9> turns = {{
    {false, 0},
    {false, 0},
    {true, 0},
    {false, 2},
    {true, 2},
    {true, 3},
    {false, 1},
    {true, 1},
    {false, 3},
}};

constexpr Turn turnOf(int code)
{
    return turns.at(code >= 1 && code <= 8 ? static_cast<size_t>(code) : 0);
}

int codeOf(Turn turn)
{
    for (int code = 1; code <= 8; ++code) {
        if (turnOf(code) == turn) {
            return code;
        }
    }
    return 1;
}

/// Copies every pixel to the place that @p at gives for its column and row.
template<typename Place>
void copyPixels(const QImage &source, Place at)
{
    for (int row = 0; row < source.height(); ++row) {
        const auto *line = reinterpret_cast<const QRgb *>(source.constScanLine(row));
        for (int column = 0; column < source.width(); ++column) {
            *at(column, row) = line[column];
        }
    }
}

} // namespace

int Orientation::rotated(int code, int quarters)
{
    auto turn = turnOf(code);
    turn.quarters = (turn.quarters + quarters) & 3;
    return codeOf(turn);
}

int Orientation::flippedHorizontally(int code)
{
    // A mirroring after a turn is the mirroring before the opposite turn.
    const auto turn = turnOf(code);
    return codeOf({!turn.mirrored, -turn.quarters & 3});
}

int Orientation::flippedVertically(int code)
{
    return rotated(flippedHorizontally(code), 2);
}

bool Orientation::swapsEdges(int code)
{
    return (turnOf(code).quarters & 1) != 0;
}

QImage Orientation::upright(const QImage &image, int code)
{
    const auto turn = turnOf(code);
    if (turn == turnOf(1) || image.isNull()) {
        return image;
    }
    const auto source = image.convertToFormat(QImage::Format_RGB32);
    QImage result(swapsEdges(code) ? source.size().transposed() : source.size(),
                  QImage::Format_RGB32);
    if (source.isNull() || result.isNull()) {
        return {};
    }
    auto *pixels = reinterpret_cast<QRgb *>(result.bits());
    const qsizetype stride = result.bytesPerLine() / qsizetype{sizeof(QRgb)};
    const qsizetype lastColumn = source.width() - 1;
    const qsizetype lastRow = source.height() - 1;
    copyPixels(source, [&](qsizetype column, qsizetype row) {
        const auto x = turn.mirrored ? lastColumn - column : column;
        switch (turn.quarters) {
        case 1:
            return pixels + x * stride + (lastRow - row);
        case 2:
            return pixels + (lastRow - row) * stride + (lastColumn - x);
        case 3:
            return pixels + (lastColumn - x) * stride + row;
        default:
            return pixels + row * stride + x;
        }
    });
    return result;
}
