// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/PagedReader.h"

#include <QByteArray>
#include <QList>

#include <optional>

/// The boxes of an ISO base media file (ISO 14496-12, 4.2) within a stretch of it.
class BoxReader {
public:
    struct Box {
        /// Four characters.
        QByteArray type;
        /// Without the header, and without the sixteen bytes of a "uuid" box's extended type.
        ByteRange content;
        /// The extended type of a "uuid" box.
        QByteArray uuid = {};
    };

    /// The boxes that @p range consists of, up to the first that is damaged; a bounded number of
    /// them. The last may reach beyond the range when the file was cut: it ends with it then.
    [[nodiscard]] static QList<Box> boxes(PagedReader &reader, ByteRange range);

    /// The first of @p boxes of a type.
    [[nodiscard]] static std::optional<Box> find(const QList<Box> &boxes, QByteArrayView type);
};
