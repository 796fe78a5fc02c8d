// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ui/items/AlignedItem.h"
#include "ui/items/PicturePlacement.h"
#include "ui/items/ScalingPool.h"

#include <QCoroTask>
#include <QImage>
#include <QPointer>

#include <stop_token>

/// Shows a bitmap with its aspect ratio kept, whole or filling the item, on whole pixels of the
/// window.
///
/// High quality is a cubic filter, so that the bitmap is as sharp enlarged as it is reduced. It
/// makes a copy of exactly the shown size: at once when that takes less than half a frame, else on
/// a worker thread. Until that is there a graphics card filters as well, at a price for each frame,
/// so that nobody sees the copy come. Without a card larger copies are made at once, and the bitmap
/// is drawn plainly until the largest ones are there.
class FitImage : public AlignedItem {
    Q_OBJECT
    Q_PROPERTY(ScalingPool *pool READ pool WRITE setPool NOTIFY poolChanged REQUIRED)
    Q_PROPERTY(QImage image READ image WRITE setImage NOTIFY imageChanged)
    Q_PROPERTY(
        bool smoothScaling READ smoothScaling WRITE setSmoothScaling NOTIFY smoothScalingChanged)
    Q_PROPERTY(FillMode fillMode READ fillMode WRITE setFillMode NOTIFY fillModeChanged)
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)

public:
    enum class FillMode { Fit, Crop };
    Q_ENUM(FillMode)

    explicit FitImage(QQuickItem *parent = nullptr);
    ~FitImage() override;

    /// Where large copies are made; without it there are none but for rounded corners.
    [[nodiscard]] ScalingPool *pool() const { return m_pool; }

    void setPool(ScalingPool *pool);

    [[nodiscard]] const QImage &image() const { return m_image; }

    void setImage(const QImage &image);

    /// High quality; otherwise a quick interpolation, for pictures that are soon replaced.
    [[nodiscard]] bool smoothScaling() const { return m_smoothScaling; }

    void setSmoothScaling(bool smooth);

    [[nodiscard]] FillMode fillMode() const { return m_fillMode; }

    void setFillMode(FillMode mode);

    /// Of the corners, in points.
    [[nodiscard]] qreal radius() const { return m_radius; }

    void setRadius(qreal radius);

    /// Where the bitmap is drawn: its target starts and ends on whole pixels of the window.
    [[nodiscard]] PicturePlacement placement() const;

Q_SIGNALS:
    void poolChanged();
    void imageChanged();
    void smoothScalingChanged();
    void fillModeChanged();
    void radiusChanged();

protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void rasterizerChanged() override { refresh(); }

private:
    /// What a copy of the shown size is made from.
    struct Copy {
        qint64 imageKey = 0;
        QRect source;
        QSize size;
        qreal radius = 0; ///< in pixels

        bool operator==(const Copy &) const = default;
    };

    /// How the bitmap, or its copy, comes onto the screen.
    enum class Drawing {
        Exact,     ///< a pixel on a pixel
        Plain,     ///< quickly interpolated
        Mipmapped, ///< much reduced
        Enlarged,  ///< by the cubic filter, as the next
        Reduced,
    };

    /// Pixels of the window per pixel of the bitmap, in the direction that has fewer.
    [[nodiscard]] qreal scale(const PicturePlacement &place) const;
    [[nodiscard]] Drawing drawing(const PicturePlacement &place, bool isCopy) const;
    [[nodiscard]] static QImage makeCopy(const QImage &image, const Copy &copy,
                                         QThreadPool *helpers);
    [[nodiscard]] bool isMadeAtOnce(const Copy &copy) const;
    [[nodiscard]] std::optional<Copy> neededCopy() const;
    void wantCopy(const Copy &copy);
    QCoro::Task<> makeCopyElsewhere(Copy copy, std::stop_token stop);
    void refresh();

    QPointer<ScalingPool> m_pool;
    QImage m_image;
    bool m_smoothScaling = true;
    FillMode m_fillMode = FillMode::Fit;
    qreal m_radius = 0;
    QImage m_copyImage;
    Copy m_copy;   ///< what m_copyImage shows
    Copy m_wanted; ///< the newest copy that was asked for
    std::stop_source m_wantedStop;
    qint64 m_textureKey = 0;
    Drawing m_drawing = Drawing::Plain; ///< of the node
};
