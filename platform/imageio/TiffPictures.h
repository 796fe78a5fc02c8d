// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/PagedReader.h"

#include <QList>
#include <QSize>

#include <optional>

/// Where a TIFF file that is no RAW file keeps its picture, and smaller versions of it.
struct TiffPictures {
    struct Picture {
        /// Of its directory, in the file.
        qint64 directory = 0;
        /// Pixels, as stored.
        QSize size = {};
        /// The code of EXIF, 1 to 8, where there is one.
        std::optional<int> orientation = {};
        std::optional<ByteRange> profile = {};
    };

    /// Nothing for RAW files, and where there is no picture.
    [[nodiscard]] static std::optional<TiffPictures> find(PagedReader &reader);

    /// The first that is no smaller version of another.
    Picture main;
    /// Of that one alone, among other pages: in its directory, or behind it and in front of the
    /// next. The narrowest first.
    QList<Picture> smaller = {};
    /// The code of EXIF, 1 to 8, for all of them: smaller ones of another are left out.
    int orientation = 1;
    /// What the colours are without a profile.
    bool isAdobeRgb = false;
};
