// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffLayout.h"

#include <algorithm>

namespace {

constexpr qint64 longestEdge = 1'000'000;

template<typename T>
T field(TIFF *tiff, uint32_t tag, T otherwise = 0)
{
    T value = otherwise;
    return TIFFGetFieldDefaulted(tiff, tag, &value) != 0 ? value : otherwise;
}

/// Old writers leave the tag out; what the samples can be is the best guess.
uint16_t photometric(TIFF *tiff, uint16_t samples, uint16_t compression)
{
    uint16_t value = 0;
    if (TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &value) != 0) {
        return value;
    }
    constexpr uint16_t faxes[] = {COMPRESSION_CCITTRLE, COMPRESSION_CCITTFAX3,
                                  COMPRESSION_CCITTFAX4, COMPRESSION_CCITTRLEW};
    if (std::ranges::find(faxes, compression) != std::end(faxes)) {
        return PHOTOMETRIC_MINISWHITE;
    }
    return samples >= 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK;
}

bool readPalette(TiffLayout &layout, TIFF *tiff)
{
    uint16_t *red = nullptr;
    uint16_t *green = nullptr;
    uint16_t *blue = nullptr;
    if (layout.bits > 8 || TIFFGetField(tiff, TIFFTAG_COLORMAP, &red, &green, &blue) == 0) {
        return false;
    }
    const auto count = size_t{1} << layout.bits;
    for (const auto *channel : {red, green, blue}) {
        layout.palette.insert(layout.palette.end(), channel, channel + count);
    }
    // Some writers fill in values of 8 bits.
    if (std::ranges::all_of(layout.palette, [](quint16 value) { return value < 256; })) {
        for (auto &value : layout.palette) {
            value = static_cast<quint16>(value * 257);
        }
    }
    return true;
}

bool readColors(TiffLayout &layout, TIFF *tiff, uint16_t photometric, uint16_t compression)
{
    using Colors = TiffLayout::Colors;
    const bool chunkyJpeg = compression == COMPRESSION_JPEG && !layout.isPlanar;
    switch (photometric) {
    case PHOTOMETRIC_MINISBLACK:
    case PHOTOMETRIC_MINISWHITE:
        layout.colors = photometric == PHOTOMETRIC_MINISBLACK ? Colors::Light : Colors::Darkness;
        layout.colorSamples = 1;
        break;
    case PHOTOMETRIC_PALETTE:
        layout.colors = Colors::Palette;
        layout.colorSamples = 1;
        return readPalette(layout, tiff);
    case PHOTOMETRIC_RGB:
        layout.colors = Colors::Rgb;
        layout.colorSamples = 3;
        break;
    case PHOTOMETRIC_SEPARATED:
        layout.colors = Colors::Inks;
        layout.colorSamples = 4;
        return field<uint16_t>(tiff, TIFFTAG_INKSET, INKSET_CMYK) == INKSET_CMYK;
    case PHOTOMETRIC_CIELAB:
    case PHOTOMETRIC_ICCLAB:
        layout.colors = photometric == PHOTOMETRIC_CIELAB ? Colors::Lab : Colors::IccLab;
        layout.colorSamples = 3;
        return layout.bits == 8 || layout.bits == 16;
    case PHOTOMETRIC_LOGL:
    case PHOTOMETRIC_LOGLUV:
        layout.colors = photometric == PHOTOMETRIC_LOGL ? Colors::Light : Colors::Rgb;
        layout.colorSamples = photometric == PHOTOMETRIC_LOGL ? 1 : 3;
        layout.bits = 8;
        layout.numbers = TiffLayout::Numbers::Unsigned;
        return TIFFSetField(tiff, TIFFTAG_SGILOGDATAFMT, SGILOGDATAFMT_8BIT) != 0;
    case PHOTOMETRIC_YCBCR:
        layout.colors = chunkyJpeg ? Colors::Rgb : Colors::Converted;
        layout.colorSamples = 3;
        return !chunkyJpeg || TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB) != 0;
    default:
        return false;
    }
    return true;
}

/// Further samples of no stated meaning are none of the picture's business.
void readAlpha(TiffLayout &layout, TIFF *tiff)
{
    uint16_t count = 0;
    uint16_t *kinds = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds) == 0) {
        return;
    }
    for (int extra = 0; extra < std::min<int>(count, layout.samples - layout.colorSamples);
         ++extra) {
        if (kinds[extra] == EXTRASAMPLE_ASSOCALPHA || kinds[extra] == EXTRASAMPLE_UNASSALPHA) {
            layout.alpha = kinds[extra] == EXTRASAMPLE_ASSOCALPHA ? TiffLayout::Alpha::Associated
                                                                  : TiffLayout::Alpha::Separate;
            layout.alphaSample = layout.colorSamples + extra;
            return;
        }
    }
}

bool isDecodable(const TiffLayout &layout)
{
    constexpr int whole[] = {1, 2, 4, 8, 16, 32};
    constexpr int floating[] = {16, 32, 64};
    if (layout.numbers == TiffLayout::Numbers::Floating) {
        return std::ranges::find(floating, layout.bits) != std::end(floating) &&
               layout.colors != TiffLayout::Colors::Palette;
    }
    return std::ranges::find(whole, layout.bits) != std::end(whole);
}

} // namespace

std::optional<TiffLayout> TiffLayout::read(const TiffFile &file)
{
    auto *const tiff = file.handle();
    TiffLayout layout;
    const auto width = field<uint32_t>(tiff, TIFFTAG_IMAGEWIDTH);
    const auto height = field<uint32_t>(tiff, TIFFTAG_IMAGELENGTH);
    if (width == 0 || height == 0 || width > longestEdge || height > longestEdge) {
        return std::nullopt;
    }
    layout.size = {static_cast<int>(width), static_cast<int>(height)};
    layout.bits = field<uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    layout.samples = field<uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    layout.isPlanar =
        layout.samples > 1 &&
        field<uint16_t>(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
    const auto format = field<uint16_t>(tiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    if (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_INT && format != SAMPLEFORMAT_VOID &&
        format != SAMPLEFORMAT_IEEEFP) {
        return std::nullopt;
    }
    layout.numbers = format == SAMPLEFORMAT_INT      ? Numbers::Signed
                     : format == SAMPLEFORMAT_IEEEFP ? Numbers::Floating
                                                     : Numbers::Unsigned;
    layout.isTiled = TIFFIsTiled(tiff) != 0;
    if (layout.isTiled) {
        const auto tileWidth = field<uint32_t>(tiff, TIFFTAG_TILEWIDTH);
        const auto tileHeight = field<uint32_t>(tiff, TIFFTAG_TILELENGTH);
        if (tileWidth == 0 || tileHeight == 0 || tileWidth > longestEdge ||
            tileHeight > longestEdge) {
            return std::nullopt;
        }
        layout.tile = {static_cast<int>(tileWidth), static_cast<int>(tileHeight)};
    }
    layout.rowsPerStrip = static_cast<int>(
        std::clamp<uint32_t>(field<uint32_t>(tiff, TIFFTAG_ROWSPERSTRIP), 1, height));
    const auto compression = field<uint16_t>(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    if (!readColors(layout, tiff,
                    photometric(tiff, static_cast<uint16_t>(layout.samples), compression),
                    compression)) {
        return std::nullopt;
    }
    // A lightness alone is a picture in grey.
    if (layout.colorSamples == 3 && layout.samples == 1 && layout.colors == Colors::Lab) {
        layout.colors = Colors::Light;
        layout.colorSamples = 1;
    }
    if (layout.samples < layout.colorSamples || !isDecodable(layout)) {
        return std::nullopt;
    }
    readAlpha(layout, tiff);
    return layout;
}
