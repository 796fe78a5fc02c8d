// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/Resampler.h"
#include "platform/imageio/UprightPicture.h"

#include <QImage>

#include <optional>

/// A picture that is put together from stored rows, scaled down to the wanted size where that is
/// smaller. Needs the memory of the target and of some rows. For one thread.
class FittedPicture {
public:
    /// @p stored and @p target are sizes before @p orientation, a code of EXIF, is applied; the
    /// target is at most as large.
    FittedPicture(QSize stored, QSize target, int orientation)
        : m_picture(target, orientation)
    {
        if (m_picture.isValid() && stored != target) {
            m_resampler.emplace(stored, target, m_picture);
        }
    }
    FittedPicture(const FittedPicture &) = delete;
    FittedPicture &operator=(const FittedPicture &) = delete;

    /// Whether there was memory for it.
    [[nodiscard]] bool isValid() const { return m_picture.isValid(); }

    /// The next stored row.
    void addRow(const QRgb *pixels)
    {
        if (m_resampler) {
            m_resampler->addRow(pixels);
        } else {
            m_picture.addRow(pixels);
        }
    }

    /// The picture, with the rows that never came black. Format_RGB32.
    [[nodiscard]] QImage take() { return m_picture.take(); }

private:
    UprightPicture m_picture;
    std::optional<Resampler> m_resampler;
};
