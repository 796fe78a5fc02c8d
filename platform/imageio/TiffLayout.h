// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/TiffFile.h"

#include <QSize>

#include <optional>
#include <vector>

/// How one image of a TIFF file stores its pixels (TIFF 6.0), as far as we decode them ourselves.
struct TiffLayout {
    enum class Colors {
        Light,    ///< grey, 0 is black
        Darkness, ///< grey, 0 is white
        Palette,
        Rgb,
        Inks,      ///< cyan, magenta, yellow, black
        Lab,       ///< CIE L*a*b*, a* and b* signed
        IccLab,    ///< the same, a* and b* with an offset
        Converted, ///< libtiff makes RGB of it, as from YCbCr
    };
    enum class Numbers { Unsigned, Signed, Floating };
    enum class Alpha {
        None,
        Associated, ///< the colours are multiplied by it already
        Separate,
    };

    /// What the current directory of @p file says; nothing for what cannot be decoded. Tells
    /// libtiff to convert JPEG and LogLuv to RGB, as which they count here.
    [[nodiscard]] static std::optional<TiffLayout> read(const TiffFile &file);

    QSize size;
    Colors colors = Colors::Light;
    Numbers numbers = Numbers::Unsigned;
    Alpha alpha = Alpha::None;
    /// Of one sample: 1, 2, 4, 8, 16, 32 or 64.
    int bits = 1;
    /// All samples of a pixel, and those in front that make its colour.
    int samples = 1;
    int colorSamples = 1;
    /// Which sample the alpha is.
    int alphaSample = 0;
    /// Each sample in a plane of its own.
    bool isPlanar = false;
    bool isTiled = false;
    QSize tile = {};
    int rowsPerStrip = 1;
    /// Of the palette, 16 bits a channel: all reds, all greens, all blues.
    std::vector<quint16> palette = {};
};
