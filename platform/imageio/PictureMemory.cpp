// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/PictureMemory.h"

#include <cstdlib>

#include <sys/mman.h>

namespace {

constexpr qint64 largePage = qint64{2} * 1024 * 1024;
/// Those in full resolution. Of smaller ones many are kept, each with a last page half empty.
constexpr qint64 smallestLargePicture = 16 * largePage;

} // namespace

QImage PictureMemory::picture(QSize size)
{
    const auto stride = qint64{size.width()} * qint64{sizeof(QRgb)};
    const auto bytes = stride * size.height();
    if (size.isEmpty() || bytes < smallestLargePicture) {
        return {size, QImage::Format_RGB32};
    }
    const auto rounded = static_cast<size_t>((bytes + largePage - 1) / largePage * largePage);
    auto *const memory = static_cast<uchar *>(std::aligned_alloc(largePage, rounded));
    if (!memory) {
        return {};
    }
    ::madvise(memory, rounded, MADV_HUGEPAGE); // a wish; small pages do as well
    return {memory, size.width(), size.height(), stride, QImage::Format_RGB32, std::free, memory};
}
