// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>

/// How alike two pictures of one size are. Pure.
namespace PictureSimilarity {

/// The picture at another size, each pixel the mean of the area it takes. Format_RGB32.
[[nodiscard]] QImage averaged(const QImage &image, QSize size);

/// The mean difference of all colours of all pixels, 0 to 255.
[[nodiscard]] double meanDifference(const QImage &one, const QImage &other);

/// The mean structural similarity of the brightness in windows of 8 by 8 pixels (Wang, Bovik,
/// Sheikh and Simoncelli, 2004): 1 for equal pictures, about 0 for unrelated ones.
[[nodiscard]] double structure(const QImage &one, const QImage &other);

} // namespace PictureSimilarity
