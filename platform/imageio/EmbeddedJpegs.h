// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/FileKind.h"
#include "platform/imageio/PagedReader.h"

#include <QList>
#include <QSize>

/// The JPEG pictures that a RAW file embeds.
class EmbeddedJpegs {
public:
    struct Candidate {
        ByteRange range;
        /// Pixels, as stored.
        QSize size;
    };

    /// Those that can be shown, in no order. Empty for files that are no RAW files.
    [[nodiscard]] static QList<Candidate> find(PagedReader &reader, FileKind kind);
};
