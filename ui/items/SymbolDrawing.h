// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/items/Symbol.h"

/// The drawings of the symbols, in a square of 24 units.
namespace SymbolDrawing {

constexpr qreal side = 24;

/// Draws with the painter's coordinates being those of the square.
void draw(Symbol::Kind kind, const QColor &color, QPainter *painter);

} // namespace SymbolDrawing
