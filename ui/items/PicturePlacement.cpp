// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/items/PicturePlacement.h"

static QRectF centred(QSizeF size, QSizeF area)
{
    return {QPointF((area.width() - size.width()) / 2, (area.height() - size.height()) / 2), size};
}

PicturePlacement PicturePlacement::fitting(QSize picture, QSizeF area)
{
    return {.target = centred(QSizeF(picture).scaled(area, Qt::KeepAspectRatio), area),
            .source = QRectF(QPointF(), QSizeF(picture))};
}

PicturePlacement PicturePlacement::cropping(QSize picture, QSizeF area)
{
    const QSizeF shown = area.scaled(QSizeF(picture), Qt::KeepAspectRatio);
    return {.target = QRectF(QPointF(), area), .source = centred(shown, QSizeF(picture))};
}

QSize PicturePlacement::pixelSize(qreal pixelRatio) const
{
    return (target.size() * pixelRatio).toSize().expandedTo({1, 1});
}
