// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/HeifItem.h"

#include <QRect>

/// What the steps of an item come to: the part of the stored picture that is shown, and how that is
/// turned. Pure.
struct HeifPlacement {
    /// In pixels of the stored picture.
    QRect window = {};
    /// The code of EXIF; see Orientation.
    int orientation = 1;

    /// The size of what is shown, turned.
    [[nodiscard]] QSize shownSize() const;

    /// A crop that leaves nothing counts as none.
    [[nodiscard]] static HeifPlacement of(QSize stored, const QList<HeifItem::Step> &steps);

    bool operator==(const HeifPlacement &) const = default;
};
