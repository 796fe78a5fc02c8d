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

bool Orientation::isUpright(int code)
{
    return turnOf(code) == turnOf(1);
}

bool Orientation::swapsEdges(int code)
{
    return (turnOf(code).quarters & 1) != 0;
}

Orientation::Place Orientation::place(int code, QSize stored, qsizetype column, qsizetype row)
{
    const auto turn = turnOf(code);
    const qsizetype lastColumn = stored.width() - 1;
    const qsizetype lastRow = stored.height() - 1;
    const auto x = turn.mirrored ? lastColumn - column : column;
    switch (turn.quarters) {
    case 1:
        return {lastRow - row, x};
    case 2:
        return {lastColumn - x, lastRow - row};
    case 3:
        return {row, lastColumn - x};
    default:
        return {x, row};
    }
}
