// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/hevc/CodedColor.h"
#include "platform/imageio/ByteRange.h"

#include <QByteArray>
#include <QList>
#include <QSize>

#include <array>
#include <optional>

/// One picture of a HEIF file (ISO 23008-12), coded or made of others.
struct HeifItem {
    /// What is done to the picture before it is shown.
    struct Step {
        enum class Kind { Crop, Turn, Mirror };
        Kind kind = Kind::Turn;
        /// Turn: quarters, anticlockwise. Mirror: 1 exchanges left and right, 0 top and bottom.
        int value = 0;
        /// Crop: width, height and the centre's distance from the picture's, each a numerator and
        /// a denominator ("clap", ISO 14496-12, 12.1.4).
        std::array<qint32, 8> window = {};
    };

    /// Four characters: "hvc1", "jpeg", "grid", "iden", "iovl".
    QByteArray type = {};
    /// Pixels before any step; empty when the file does not say.
    QSize size = {};
    /// In the order in which they apply.
    QList<Step> steps = {};
    /// The decoder's configuration ("hvcC").
    QByteArray configuration = {};
    /// Where its profile is; empty without one.
    ByteRange icc = {};
    std::optional<CodedColor> color = {};
    /// What an auxiliary picture is for, a name like a URL's.
    QByteArray purpose = {};
    /// Where the bytes are.
    QList<ByteRange> extents = {};
    /// What it is made of.
    QList<quint32> inputs = {};

    /// Whether it says what its colours are, and not only how they are coded.
    [[nodiscard]] bool describesColors() const
    {
        return icc.length > 0 || (color && (color->primaries != CodedColor::unspecified ||
                                            color->transfer != CodedColor::unspecified));
    }
};
