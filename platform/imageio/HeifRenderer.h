// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/HeifCatalog.h"
#include "platform/imageio/HeifPlacement.h"
#include "platform/imageio/PictureRows.h"

/// Makes pictures of the items of a HEIF file, coded ones (HEVC and JPEG) and those that are made
/// of others: grids, overlays, and items that only turn or crop another one. For one thread.
class HeifRenderer {
public:
    struct Picture {
        std::unique_ptr<PictureRows> rows;
        /// To be applied to the rows, in this order.
        QList<HeifItem::Step> steps = {};
        /// Where the profile of the rows is, which are in sRGB where this and the next say nothing.
        ByteRange icc = {};
        CodedColor color = {};
    };

    /// Pictures may use some @p memory bytes, each. Both references must outlive this.
    HeifRenderer(const InputFile &file, const HeifCatalog &catalog, qint64 memory);

    /// Nothing when the item is of another type, is damaged, too large, or made of itself.
    [[nodiscard]] std::optional<Picture> render(const HeifItem &item);

private:
    struct Part {
        quint32 id = 0;
        QPoint corner = {};
    };

    /// What an item is part of.
    struct Context {
        int storeys = 0;
        /// Whether it is said there already what the colours are.
        bool describesColors = false;
    };

    std::optional<Picture> renderPart(quint32 id, Context context);
    std::optional<Picture> renderItem(const HeifItem &item, Context context);
    std::optional<Picture> renderTiles(const HeifItem &item);
    std::optional<Picture> renderJpeg(const HeifItem &item, Context context);
    std::optional<Picture> renderIdentity(const HeifItem &item, Context context);
    std::optional<Picture> renderGrid(const HeifItem &item, Context context);
    std::optional<Picture> renderOverlay(const HeifItem &item, Context context);
    std::optional<Picture> renderCanvas(const HeifItem &item, QImage canvas,
                                        const QList<Part> &parts, Context context);
    QImage canvas(QSize size, QRgb color);
    bool spend(QSize size, qint64 count = 1);
    bool spend(const QList<HeifItem> &coded);

    const InputFile &m_file;
    const HeifCatalog &m_catalog;
    qint64 m_memory;
    /// Pixels that may still be decoded or drawn: a few bytes can name a large picture many times.
    qint64 m_pixelsLeft;
    /// Coded bytes that may still be decoded.
    qint64 m_bytesLeft;
    /// Items that may still be looked at.
    int m_itemsLeft;
    /// Of the canvases that are in memory.
    qint64 m_canvasPixels = 0;
};

/// @p rows scaled by the Resampler to @p target, the size of what is shown before it is turned, and
/// turned as @p placement says. Null when there is no memory.
[[nodiscard]] QImage drawn(PictureRows &rows, const HeifPlacement &placement, QSize target);
