// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/hevc/CodedColor.h"

#include <QByteArray>
#include <QImage>

/// The colours of a picture with an ICC profile (ICC.1:2010) or with the numbers of ITU-T H.273 as
/// those of sRGB. Safe from several threads.
namespace ColorProfile {

/// @p image, Format_RGB32, whose colours @p icc describes, in sRGB. Left as it is where there is
/// nothing to do or nothing to be done: without a profile, with sRGB's own, with a damaged one, and
/// with one for grey or printing colours, which are shown plainly.
[[nodiscard]] QImage toSrgb(QImage image, const QByteArray &icc);

/// @p image, Format_RGB32, whose primaries and transfer characteristic are @p color's, in sRGB. The
/// characteristics of television (1, 6, 14, 15) are taken for sRGB's, as everybody does, and so are
/// those of PQ and HLG, whose pictures have gone through ToneCurve. Left as it is where there is
/// nothing to do and where a number is unknown.
[[nodiscard]] QImage toSrgb(QImage image, const CodedColor &color);

/// The profile of Adobe RGB (1998).
[[nodiscard]] QByteArray adobeRgb();

} // namespace ColorProfile
