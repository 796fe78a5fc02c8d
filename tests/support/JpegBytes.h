// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

/// Writes JPEG streams of every process that libjpeg writes.
namespace JpegBytes {

enum class Colors { YCbCr, Rgb, Grey, Cmyk, Ycck };
enum class Process { Baseline, Extended, Progressive, Arithmetic, ProgressiveArithmetic };

struct Shape {
    Colors colors = Colors::YCbCr;
    Process process = Process::Baseline;
    /// Of the first component, the others having 1 x 1.
    QSize sampling = {1, 1};
    /// In blocks; 0 for none.
    int restartInterval = 0;
    /// Only of inks: the samples are as Adobe's programs write them, more being less ink.
    bool isInverted = true;
    int quality = 98;
};

/// @p image in this shape; without black where it has inks.
[[nodiscard]] QByteArray jpeg(const QImage &image, const Shape &shape);

} // namespace JpegBytes
