// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QRectF>
#include <QSize>

/// Where a picture is drawn, and which part of it.
struct PicturePlacement {
    QRectF target; ///< in the area's own coordinates
    QRectF source; ///< in pixels of the picture

    /// The whole picture, as large as @p area allows, centred; enlarged when it is smaller.
    [[nodiscard]] static PicturePlacement fitting(QSize picture, QSizeF area);

    /// All of @p area filled; the picture's longer side is cut off evenly.
    [[nodiscard]] static PicturePlacement cropping(QSize picture, QSizeF area);

    /// How many pixels the target takes, at @p pixelRatio of them per point; one at least.
    [[nodiscard]] QSize pixelSize(qreal pixelRatio) const;

    bool operator==(const PicturePlacement &) const = default;
};
