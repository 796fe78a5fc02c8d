// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/imageio/ByteRange.h"
#include "platform/imageio/PagedReader.h"

#include <QList>

/// Where Canon's CR3 keeps pictures: an ISO base media file (ISO 14496-12) with boxes of Canon's
/// own, known from the public description of the format by L. Aubert; Canon published none.
namespace Cr3Pictures {

/// The thumbnail, the preview, and the first sample of every track, of which one is a JPEG and the
/// others are sensor data. Empty when @p reader's file is cut before them.
[[nodiscard]] QList<ByteRange> find(PagedReader &reader);

} // namespace Cr3Pictures
