// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/LibRawThumbnail.h"

#include "platform/imageio/LibRawStream.h"

#include <libraw/libraw.h>

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
