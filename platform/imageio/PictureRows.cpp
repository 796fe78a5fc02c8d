// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/PictureRows.h"

#include <algorithm>
#include <utility>

ImageRows::ImageRows(QImage image)
    : m_image(std::move(image))
{
}

bool ImageRows::readRow(QRgb *pixels)
{
    if (m_row >= m_image.height()) {
        return false;
    }
    const auto *row = reinterpret_cast<const QRgb *>(m_image.constScanLine(m_row++));
    std::copy_n(row, m_image.width(), pixels);
    return true;
}

StretchedRows::StretchedRows(std::unique_ptr<PictureRows> picture, QSize size)
    : m_picture(std::move(picture))
    , m_size(size)
    , m_row(static_cast<size_t>(m_picture->size().width()))
{
}

bool StretchedRows::readRow(QRgb *pixels)
{
    if (m_nextRow >= m_size.height()) {
        return false;
    }
    const auto from = m_picture->size();
    const auto row = qint64{m_nextRow} * from.height() / m_size.height();
    while (m_rowsRead <= row) {
        if (!m_picture->readRow(m_row.data())) {
            return false;
        }
        ++m_rowsRead;
    }
    ++m_nextRow;
    for (int column = 0; column < m_size.width(); ++column) {
        const auto source = qint64{column} * from.width() / m_size.width();
        pixels[column] = m_row.at(static_cast<size_t>(source));
    }
    return true;
}

TransparentRows::TransparentRows(std::unique_ptr<PictureRows> picture,
                                 std::unique_ptr<PictureRows> alpha)
    : m_picture(std::move(picture))
    , m_alpha(std::move(alpha))
    , m_row(static_cast<size_t>(m_alpha->size().width()))
{
}

bool TransparentRows::readRow(QRgb *pixels)
{
    if (!m_picture->readRow(pixels)) {
        return false;
    }
    if (m_alpha->readRow(m_row.data())) {
        const auto darkened = [](QRgb alpha, QRgb pixel) {
            const auto weighed = [&](int value) { return (value * qGreen(alpha) + 127) / 255; };
            return qRgb(weighed(qRed(pixel)), weighed(qGreen(pixel)), weighed(qBlue(pixel)));
        };
        std::transform(m_row.begin(), m_row.end(), pixels, pixels, darkened);
    }
    return true;
}
