// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/TiffColors.h"
#include "platform/imageio/TiffFile.h"
#include "platform/imageio/TiffLayout.h"

#include <QRgb>

#include <memory>

/// The rows of one image of a TIFF file, decoded from the top to the bottom. For one thread.
class TiffRows {
public:
    /// Of the directory at @p directory, using up to @p memory bytes. Null for what cannot be
    /// decoded or takes more. @p file must outlive this.
    [[nodiscard]] static std::unique_ptr<TiffRows>
    open(const InputFile &file, qint64 directory, qint64 memory, TiffColors::Floating floating);

    TiffRows(const TiffRows &) = delete;
    TiffRows &operator=(const TiffRows &) = delete;
    virtual ~TiffRows() = default;

    [[nodiscard]] QSize size() const { return m_layout.size; }

    /// Row number @p row, which must be one more than the last; black where damage has destroyed
    /// it. False when all of it is destroyed.
    [[nodiscard]] virtual bool read(int row, QRgb *pixels) = 0;

protected:
    explicit TiffRows(TiffLayout layout)
        : m_layout(std::move(layout))
    {
    }

    [[nodiscard]] const TiffLayout &layout() const { return m_layout; }

private:
    TiffLayout m_layout;
};
