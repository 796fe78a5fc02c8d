// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/DcfColors.h"

#include "platform/imageio/BoxReader.h"

namespace {

using Directory = TiffReader::Directory;

constexpr quint16 exifTag = 0x8769;
constexpr quint16 subDirectoriesTag = 0x014a;
constexpr quint16 previewColorsTag = 0xc71a;

bool saysAdobeRgb(const TiffReader &tiff, const std::optional<Directory> &exif)
{
    constexpr quint16 colorSpaceTag = 0xa001;
    constexpr quint16 interoperabilityTag = 0xa005;
    constexpr quint16 indexTag = 0x0001;
    constexpr qint64 srgb = 1;
    constexpr qint64 adobeRgb = 2; // in no standard, but written
    if (!exif) {
        return false;
    }
    const auto colorSpace = tiff.integer(exif->find(colorSpaceTag)).value_or(0);
    if (colorSpace == srgb || colorSpace == adobeRgb) {
        return colorSpace == adobeRgb;
    }
    const auto offset = tiff.integer(exif->find(interoperabilityTag));
    const auto interoperability = offset ? tiff.directory(*offset) : std::nullopt;
    const auto index = interoperability ? interoperability->find(indexTag) : std::nullopt;
    return index && tiff.value(*index).toString() == QLatin1String("R03");
}

/// DNG's converters write previews of their own and say how.
std::optional<bool> saysPreview(const TiffReader &tiff, const Directory &main)
{
    constexpr qint64 adobeRgb = 3;
    constexpr qsizetype mostDirectories = 16;
    auto colors = tiff.integer(main.find(previewColorsTag));
    const auto offsets = tiff.integers(main.find(subDirectoriesTag)).mid(0, mostDirectories);
    for (const auto offset : offsets) {
        const auto directory = colors ? std::nullopt : tiff.directory(offset);
        if (directory) {
            colors = tiff.integer(directory->find(previewColorsTag));
        }
    }
    return colors ? std::optional(*colors == adobeRgb) : std::nullopt;
}

/// Canon's CR3 has the EXIF directory in a box of its own.
bool saysCr3(PagedReader &reader)
{
    auto boxes = BoxReader::boxes(reader, {0, reader.size()});
    for (const auto *type : {"moov", "uuid"}) {
        const auto box = BoxReader::find(boxes, type);
        if (!box) {
            return false;
        }
        boxes = BoxReader::boxes(reader, box->content);
    }
    const auto exif = BoxReader::find(boxes, "CMT2");
    const auto tiff = exif ? TiffReader::open(reader, exif->content) : std::nullopt;
    return tiff && saysAdobeRgb(*tiff, tiff->directory(tiff->firstDirectory()));
}

} // namespace

bool DcfColors::areAdobeRgb(const TiffReader &tiff)
{
    const auto main = tiff.directory(tiff.firstDirectory());
    const auto offset = main ? tiff.integer(main->find(exifTag)) : std::nullopt;
    return offset && saysAdobeRgb(tiff, tiff.directory(*offset));
}

bool DcfColors::areAdobeRgb(PagedReader &reader, FileKind kind)
{
    if (kind == FileKind::Cr3) {
        return saysCr3(reader);
    }
    const auto tiff =
        kind == FileKind::Tiff ? TiffReader::open(reader, {0, reader.size()}) : std::nullopt;
    const auto main = tiff ? tiff->directory(tiff->firstDirectory()) : std::nullopt;
    return main && saysPreview(*tiff, *main).value_or(areAdobeRgb(*tiff));
}
