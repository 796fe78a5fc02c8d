// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>

#include <vector>

/// A picture that is put together from its stored rows, top to bottom, and is upright at once:
/// turning a finished one would need its memory twice. For one thread.
class UprightPicture {
public:
    /// @p stored is the size in pixels before @p code, of EXIF, is applied.
    UprightPicture(QSize stored, int code);

    /// Whether there was memory for it.
    [[nodiscard]] bool isValid() const { return !m_image.isNull(); }

    /// Where the next row is to be written, opaque, as many pixels as the stored picture is wide;
    /// rowWritten() then takes it. Rows beyond the last one lead nowhere. The picture must be
    /// valid.
    [[nodiscard]] QRgb *nextRow();
    void rowWritten();

    /// The next row, copied. Further rows than the picture is high are ignored.
    void addRow(const QRgb *pixels);

    /// The picture, with the rows that never came black. Format_RGB32.
    [[nodiscard]] QImage take();

private:
    [[nodiscard]] bool isComplete() const;
    void placeBand();

    QSize m_stored;
    int m_code;
    bool m_isUpright;
    QImage m_image;
    QRgb *m_pixels;
    /// Rows that wait to be turned.
    std::vector<QRgb> m_band;
    /// What is written beyond the last row.
    std::vector<QRgb> m_spare;
    int m_rowsInBand = 0;
    int m_placedRows = 0;
};
