// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>
#include <cstddef>

/// For each orientation of EXIF 2.32, from 1 on: which quarter is stored top left, top right,
/// bottom left and bottom right, named by where the upright picture's corners lie.
constexpr std::array<std::array<std::size_t, 4>, 8> storedQuarters = {{{0, 1, 2, 3},
                                                                       {1, 0, 3, 2},
                                                                       {3, 2, 1, 0},
                                                                       {2, 3, 0, 1},
                                                                       {0, 2, 1, 3},
                                                                       {2, 0, 3, 1},
                                                                       {3, 1, 2, 0},
                                                                       {1, 3, 0, 2}}};
