// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/items/Rasterizer.h"

#include <QPointer>
#include <QQuickItem>

/// An item that draws on whole pixels of the window, wherever its ancestors are moved: what is
/// drawn between two pixels is blurred. Where it is turned or scaled there are no such places.
class AlignedItem : public QQuickItem {
    Q_OBJECT

public:
    explicit AlignedItem(QQuickItem *parent = nullptr);

    /// Pixels of the window per point.
    [[nodiscard]] qreal pixelRatio() const;

    /// How large so many pixels are, in points.
    [[nodiscard]] QSizeF inPoints(QSizeF pixels) const;

    /// Who draws; null while the item is in no window.
    [[nodiscard]] const Rasterizer *rasterizer() const { return m_rasterizer; }

    /// Whether the item is neither turned nor scaled.
    [[nodiscard]] bool isOnlyMoved() const;

    /// @p point of the item, moved to the nearest corner of a pixel of the window; as it is in an
    /// item that is turned or scaled.
    [[nodiscard]] QPointF onWholePixel(QPointF point) const;

protected:
    /// Called when the item is found to be drawn by somebody else than was thought.
    virtual void rasterizerChanged() {}

    /// An item that overrides it calls it.
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    [[nodiscard]] QSizeF pixelsPerPoint() const;
    void followIn(QQuickWindow *window);
    void follow();

    QMetaObject::Connection m_frames;
    QMetaObject::Connection m_rasterizerChanges;
    QPointer<Rasterizer> m_rasterizer;
    QPointF m_offset; ///< of the item's corner from whole pixels in the last frame, in points
};
