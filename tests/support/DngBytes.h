// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QImage>
#include <QPoint>
#include <QSize>

#include <array>
#include <functional>

/// Writes DNG files (DNG 1.4) with sensor data, so that a test knows what is in them.
namespace DngBytes {

enum class Pattern { Bayer, XTrans };

struct Dng {
    QSize size = {240, 160};
    Pattern pattern = Pattern::Bayer;
    quint16 orientation = 1;
    /// How much light, 1 being as much as the sensor holds, falls on a place in red (0), green and
    /// blue. The camera's primaries are those of sRGB.
    std::function<double(QPoint at, int color)> light;
    /// What the camera saw in neutral light, by colour.
    std::array<double, 3> neutral = {1, 1, 1};
    /// Embedded pictures: a JPEG stream, and one of plain pixels.
    QByteArray preview = {};
    QImage bitmap = {};
    /// Fields of the EXIF directory that say that the colours are those of Adobe RGB.
    bool saysAdobeRgb = false;
};

[[nodiscard]] QByteArray dng(const Dng &parts);

} // namespace DngBytes
