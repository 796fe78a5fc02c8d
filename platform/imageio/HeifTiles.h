// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/hevc/HevcPicture.h"
#include "platform/imageio/HeifItem.h"
#include "platform/imageio/InputFile.h"
#include "platform/imageio/PictureRows.h"
#include "platform/imageio/PlaneConverter.h"

#include <deque>
#include <future>
#include <memory>
#include <optional>
#include <vector>

/// A picture of tiles coded as HEVC, one to many, in reading order. Decodes some of them at a time,
/// on threads of its own, and keeps one row of them. A tile that cannot be decoded is grey.
class HeifTiles : public PictureRows {
public:
    struct Layout {
        int columns = 1;
        int rows = 1;
        /// Of each tile; empty when the file does not say.
        QSize tile = {};
        /// Of the picture. A single tile gives its own size where that is empty.
        QSize picture = {};
    };

    /// Nothing when none of the first tiles can be decoded, or when they do not fill the picture.
    /// @p color counts where there is one; else that of the first tile, else what it says itself.
    /// May use some @p memory bytes. @p file must outlive this.
    [[nodiscard]] static std::unique_ptr<HeifTiles>
    open(const InputFile &file, QList<HeifItem> tiles, const Layout &layout,
         std::optional<CodedColor> color, qint64 memory);

    [[nodiscard]] QSize size() const override { return m_layout.picture; }
    [[nodiscard]] bool readRow(QRgb *pixels) override;

    /// Of each tile, as decoded.
    [[nodiscard]] QSize tileSize() const { return m_layout.tile; }

    /// Of the rows, see PlaneConverter.
    [[nodiscard]] CodedColor color() const { return m_color; }

private:
    using Tile = std::optional<HevcPicture>;

    HeifTiles(const InputFile &file, QList<HeifItem> tiles, qint64 memory);

    bool begin(const Layout &layout, std::optional<CodedColor> color);
    qint64 mostPixels() const;
    std::future<Tile> start(const HeifItem &item) const;
    Tile takeTile();
    std::vector<Tile> takeTiles();
    void showTiles(std::vector<Tile> tiles);

    const InputFile &m_file;
    QList<HeifItem> m_items;
    Layout m_layout;
    CodedColor m_color;
    /// For one tile.
    qint64 m_memory;
    qint64 m_mostPixels = 0;
    int m_threads = 1;
    qsizetype m_started = 0;
    std::deque<std::future<Tile>> m_running;
    /// The row of tiles that is read from; nothing stands for a tile that cannot be decoded.
    std::vector<std::optional<PlaneConverter>> m_row;
    std::vector<QRgb> m_pixels;
    int m_nextRow = 0;
};
