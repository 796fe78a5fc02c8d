// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>
#include <QSize>

#include <memory>
#include <vector>

/// A picture whose rows come one after the other, top to bottom, as stored. For one thread.
class PictureRows {
public:
    PictureRows() = default;
    PictureRows(const PictureRows &) = delete;
    PictureRows &operator=(const PictureRows &) = delete;
    virtual ~PictureRows() = default;

    /// Pixels.
    [[nodiscard]] virtual QSize size() const = 0;

    /// Fills @p pixels with the next row; to be called as often as the picture is high. False when
    /// no further row can be had.
    [[nodiscard]] virtual bool readRow(QRgb *pixels) = 0;
};

/// The rows of a picture in memory, Format_RGB32.
class ImageRows : public PictureRows {
public:
    explicit ImageRows(QImage image);

    [[nodiscard]] QSize size() const override { return m_image.size(); }
    [[nodiscard]] bool readRow(QRgb *pixels) override;

private:
    QImage m_image;
    int m_row = 0;
};

/// A picture whose pixels are repeated or left out until it has another size.
class StretchedRows : public PictureRows {
public:
    StretchedRows(std::unique_ptr<PictureRows> picture, QSize size);

    [[nodiscard]] QSize size() const override { return m_size; }
    [[nodiscard]] bool readRow(QRgb *pixels) override;

private:
    std::unique_ptr<PictureRows> m_picture;
    QSize m_size;
    std::vector<QRgb> m_row;
    int m_rowsRead = 0;
    int m_nextRow = 0;
};

/// A picture over black, as transparent as another of the same size is dark.
class TransparentRows : public PictureRows {
public:
    TransparentRows(std::unique_ptr<PictureRows> picture, std::unique_ptr<PictureRows> alpha);

    [[nodiscard]] QSize size() const override { return m_picture->size(); }
    [[nodiscard]] bool readRow(QRgb *pixels) override;

private:
    std::unique_ptr<PictureRows> m_picture;
    std::unique_ptr<PictureRows> m_alpha;
    std::vector<QRgb> m_row;
};
