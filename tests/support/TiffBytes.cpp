// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/TiffBytes.h"

#include <QFloat16>

#include <cmath>
#include <cstring>
#include <memory>

#include <tiffio.h>

namespace {

using TiffBytes::Layout;
using TiffBytes::Value;

void put(const Layout &layout, QByteArray &row, qsizetype index, double value)
{
    const auto as = [&]<typename T>(T number) {
        std::memcpy(row.data() + index * qsizetype{sizeof(T)}, &number, sizeof(T));
    };
    const auto largest = std::ldexp(1.0, layout.bits) - 1;
    const bool floating = layout.sampleFormat == SAMPLEFORMAT_IEEEFP;
    const auto whole = floating ? 0U : static_cast<quint32>(std::llround(value * largest));
    switch (layout.bits) {
    case 8:
        as(static_cast<quint8>(whole));
        break;
    case 16:
        floating ? as(qfloat16(static_cast<float>(value))) : as(static_cast<quint16>(whole));
        break;
    case 32:
        floating ? as(static_cast<float>(value)) : as(whole);
        break;
    case 64:
        as(value);
        break;
    default:
        const auto bit = index * layout.bits;
        row[bit / 8] = static_cast<char>(row.at(bit / 8) |
                                         whole << (8 - layout.bits - static_cast<int>(bit % 8)));
    }
}

/// A row of samples: of one plane, or of all samples for @p plane -1.
QByteArray rowOf(const Layout &layout, QPoint from, int width, int plane, const Value &value)
{
    const int count = plane < 0 ? layout.samples : 1;
    QByteArray row((qsizetype{width} * count * layout.bits + 7) / 8, '\0');
    for (int column = 0; column < width; ++column) {
        for (int index = 0; index < count; ++index) {
            const int sample = plane < 0 ? index : plane;
            const QPoint at(std::min(from.x() + column, layout.size.width() - 1),
                            std::min(from.y(), layout.size.height() - 1));
            put(layout, row, qsizetype{column} * count + index, value(at, sample));
        }
    }
    return row;
}

void setFields(TIFF *tiff, const Layout &layout)
{
    TIFFSetField(tiff, TIFFTAG_SUBFILETYPE, layout.subfile);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, layout.size.width());
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, layout.size.height());
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, int{layout.bits});
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, int{layout.samples});
    TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, int{layout.sampleFormat});
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, int{layout.photometric});
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, int{layout.compression});
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG,
                 layout.planar ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, int{layout.orientation});
    if (layout.tile.isEmpty()) {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, layout.rowsPerStrip);
    } else {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, layout.tile.width());
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, layout.tile.height());
    }
    if (!layout.extraSamples.isEmpty()) {
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, static_cast<int>(layout.extraSamples.size()),
                     layout.extraSamples.constData());
    }
    if (!layout.profile.isEmpty()) {
        TIFFSetField(tiff, TIFFTAG_ICCPROFILE, static_cast<uint32_t>(layout.profile.size()),
                     layout.profile.constData());
    }
    if (!layout.palette.isEmpty()) {
        const auto third = layout.palette.size() / 3;
        TIFFSetField(tiff, TIFFTAG_COLORMAP, layout.palette.constData(),
                     layout.palette.constData() + third, layout.palette.constData() + 2 * third);
    }
    if (layout.photometric == PHOTOMETRIC_YCBCR) {
        if (layout.compression == COMPRESSION_JPEG) {
            TIFFSetField(tiff, TIFFTAG_YCBCRSUBSAMPLING, 2, 2);
            TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
            TIFFSetField(tiff, TIFFTAG_JPEGQUALITY, 95);
        } else {
            TIFFSetField(tiff, TIFFTAG_YCBCRSUBSAMPLING, 1, 1);
        }
    }
}

bool writeRows(TIFF *tiff, const Layout &layout, int plane, const Value &value)
{
    const auto sample = static_cast<uint16_t>(std::max(plane, 0));
    for (int y = 0; y < layout.size.height(); ++y) {
        auto row = rowOf(layout, {0, y}, layout.size.width(), plane, value);
        if (TIFFWriteScanline(tiff, row.data(), static_cast<uint32_t>(y), sample) < 0) {
            return false;
        }
    }
    return true;
}

bool writeTiles(TIFF *tiff, const Layout &layout, int plane, const Value &value)
{
    const auto sample = static_cast<uint16_t>(std::max(plane, 0));
    for (int top = 0; top < layout.size.height(); top += layout.tile.height()) {
        for (int left = 0; left < layout.size.width(); left += layout.tile.width()) {
            QByteArray tile;
            for (int y = 0; y < layout.tile.height(); ++y) {
                tile += rowOf(layout, {left, top + y}, layout.tile.width(), plane, value);
            }
            if (TIFFWriteTile(tiff, tile.data(), static_cast<uint32_t>(left),
                              static_cast<uint32_t>(top), 0, sample) < 0) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

bool TiffBytes::append(const std::filesystem::path &path, const Layout &layout, const Value &value)
{
    const auto *mode = std::filesystem::exists(path) ? "a" : layout.big ? "w8" : "w";
    const std::unique_ptr<TIFF, void (*)(TIFF *)> tiff(TIFFOpen(path.c_str(), mode), TIFFClose);
    if (!tiff) {
        return false;
    }
    setFields(tiff.get(), layout);
    for (int plane = layout.planar ? 0 : -1; plane < (layout.planar ? layout.samples : 0);
         ++plane) {
        const bool written = layout.tile.isEmpty() ? writeRows(tiff.get(), layout, plane, value)
                                                   : writeTiles(tiff.get(), layout, plane, value);
        if (!written) {
            return false;
        }
    }
    return TIFFWriteDirectory(tiff.get()) != 0;
}

bool TiffBytes::canCompress(quint16 compression)
{
    return TIFFIsCODECConfigured(compression) != 0;
}
