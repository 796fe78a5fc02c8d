// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QImage>

/// The colours of a picture with an ICC profile (ICC.1:2010) as those of sRGB. Safe from several
/// threads.
namespace ColorProfile {

/// @p image, Format_RGB32, whose colours @p icc describes, in sRGB. Left as it is where there is
/// nothing to do or nothing to be done: without a profile, with sRGB's own, with a damaged one, and
/// with one for grey or printing colours, which are shown plainly.
[[nodiscard]] QImage toSrgb(QImage image, const QByteArray &icc);

/// The profile of Adobe RGB (1998).
[[nodiscard]] QByteArray adobeRgb();

} // namespace ColorProfile
