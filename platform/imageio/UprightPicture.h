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

    /// The next row, as many pixels as the stored picture is wide. Further rows than it is high
    /// are ignored.
    void addRow(const QRgb *pixels);

    /// The picture, with the rows that never came black. Format_RGB32.
    [[nodiscard]] QImage take();

private:
    void placeBand();

    QSize m_stored;
    int m_code;
    QImage m_image;
    std::vector<QRgb> m_band;
    int m_rowsInBand = 0;
    int m_placedRows = 0;
};
