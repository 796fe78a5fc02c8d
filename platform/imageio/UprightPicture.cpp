// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/UprightPicture.h"

#include "platform/imageio/Orientation.h"
#include "platform/imageio/PictureMemory.h"

#include <algorithm>
#include <utility>

/// A row of the stored picture may become a column. Sixteen at a time fill a cache line of each
/// row they touch; one at a time would touch every line sixteen times.
constexpr int bandRows = 16;

UprightPicture::UprightPicture(QSize stored, int code)
    : m_stored(stored)
    , m_code(code)
    , m_isUpright(Orientation::isUpright(code))
    , m_image(PictureMemory::picture(Orientation::swapsEdges(code) ? stored.transposed() : stored))
    , m_pixels(reinterpret_cast<QRgb *>(m_image.bits()))
{
    if (isValid() && !m_isUpright) {
        m_band.resize(static_cast<size_t>(stored.width()) * bandRows);
    }
}

bool UprightPicture::isComplete() const
{
    return m_placedRows + m_rowsInBand >= m_stored.height();
}

QRgb *UprightPicture::nextRow()
{
    if (isComplete()) {
        m_spare.resize(static_cast<size_t>(m_stored.width()));
        return m_spare.data();
    }
    if (m_isUpright) {
        return m_pixels +
               qsizetype{m_placedRows} * m_image.bytesPerLine() / qsizetype{sizeof(QRgb)};
    }
    return m_band.data() + qsizetype{m_rowsInBand} * m_stored.width();
}

void UprightPicture::rowWritten()
{
    if (isComplete()) {
        return;
    }
    if (m_isUpright) {
        ++m_placedRows;
        return;
    }
    ++m_rowsInBand;
    if (m_rowsInBand == bandRows || isComplete()) {
        placeBand();
    }
}

void UprightPicture::addRow(const QRgb *pixels)
{
    if (!isValid() || isComplete()) {
        return;
    }
    std::copy_n(pixels, m_stored.width(), nextRow());
    rowWritten();
}

void UprightPicture::placeBand()
{
    const auto stride = m_image.bytesPerLine() / qsizetype{sizeof(QRgb)};
    // Where a stored pixel goes is linear in its column and row.
    const auto place = [&](qsizetype column, qsizetype row) {
        const auto to = Orientation::place(m_code, m_stored, column, row);
        return to.row * stride + to.column;
    };
    const auto origin = place(0, m_placedRows);
    const auto columnStep = m_stored.width() > 1 ? place(1, m_placedRows) - origin : 0;
    const auto rowStep = m_stored.height() > 1 ? place(0, m_placedRows + 1) - origin : 0;
    const auto put = [&](qsizetype column, qsizetype row) {
        m_pixels[origin + column * columnStep + row * rowStep] =
            m_band[static_cast<size_t>(row * m_stored.width() + column)];
    };
    if (Orientation::swapsEdges(m_code)) {
        for (qsizetype column = 0; column < m_stored.width(); ++column) {
            for (qsizetype row = 0; row < m_rowsInBand; ++row) {
                put(column, row);
            }
        }
    } else {
        for (qsizetype row = 0; row < m_rowsInBand; ++row) {
            for (qsizetype column = 0; column < m_stored.width(); ++column) {
                put(column, row);
            }
        }
    }
    m_placedRows += m_rowsInBand;
    m_rowsInBand = 0;
}

QImage UprightPicture::take()
{
    while (isValid() && !isComplete()) {
        std::fill_n(nextRow(), m_stored.width(), qRgb(0, 0, 0));
        rowWritten();
    }
    return std::exchange(m_image, {});
}
