// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/LibRawThumbnail.h"

#include "platform/imageio/LibRawStream.h"

#include <libraw/libraw.h>

#include <algorithm>
#include <memory>

namespace {

/// LibRaw tells how long the picture is, but keeps its place to itself: reading it from there costs
/// no copy of it in memory.
class Finder final : public LibRaw {
public:
    // Without the handler that prints when memory runs out.
    Finder()
        : LibRaw(LIBRAW_OPIONS_NO_MEMERR_CALLBACK | LIBRAW_OPIONS_NO_DATAERR_CALLBACK)
    {
    }

    [[nodiscard]] ByteRange range() const
    {
        return {libraw_internal_data.internal_data.toffset, imgdata.thumbnail.tlength};
    }
};

/// A picture of plain samples of @p bytes each; of wide ones the upper byte.
QImage fromSamples(const libraw_thumbnail_t &thumbnail, int bytes)
{
    const int colors = thumbnail.tcolors;
    const auto rowLength = qint64{thumbnail.twidth} * colors * bytes;
    QImage image(thumbnail.twidth, thumbnail.theight, QImage::Format_RGB32);
    if ((colors != 1 && colors != 3) || image.isNull() ||
        rowLength * thumbnail.theight > qint64{thumbnail.tlength}) {
        return {};
    }
    // Wide samples are of the machine's order, which is little-endian.
    const auto *source = reinterpret_cast<const uchar *>(thumbnail.thumb) + (bytes - 1);
    const int green = colors == 3 ? bytes : 0;
    for (int y = 0; y < image.height(); ++y) {
        auto *target = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x, source += ptrdiff_t{colors} * bytes) {
            *target++ = qRgb(source[0], source[green], source[2 * green]);
        }
    }
    return image;
}

} // namespace

ByteRange LibRawThumbnail::find(const InputFile &file)
{
    try {
        LibRawStream stream(file); // the finder refers to it to its end
        const auto finder = std::make_unique<Finder>();
        if (finder->open_datastream(&stream) != LIBRAW_SUCCESS) {
            return {};
        }
        return finder->range();
    } catch (const std::exception &) {
        return {};
    }
}

QImage LibRawThumbnail::bitmap(const InputFile &file, int leastEdge)
{
    try {
        LibRawStream stream(file); // the finder refers to it to its end
        const auto finder = std::make_unique<Finder>();
        if (finder->open_datastream(&stream) != LIBRAW_SUCCESS) {
            return {};
        }
        const auto &thumbnail = finder->imgdata.thumbnail;
        const auto pixels = qint64{thumbnail.twidth} * thumbnail.theight;
        // Plain pixels are no more than the file has bytes.
        if (finder->is_jpeg_thumb() != 0 || pixels == 0 || pixels > file.size() ||
            std::max(thumbnail.twidth, thumbnail.theight) < leastEdge ||
            finder->unpack_thumb() != LIBRAW_SUCCESS || thumbnail.thumb == nullptr) {
            return {};
        }
        switch (thumbnail.tformat) {
        case LIBRAW_THUMBNAIL_BITMAP:
            return fromSamples(thumbnail, 1);
        case LIBRAW_THUMBNAIL_BITMAP16:
            return fromSamples(thumbnail, 2);
        default:
            return {};
        }
    } catch (const std::exception &) {
        return {};
    }
}
