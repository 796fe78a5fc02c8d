// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ExifProperties.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

using Directory = TiffReader::Directory;
using Shape = TiffReader::Shape;

struct Tag {
    quint16 number;
    QStringView name;
    Shape shape = Shape::Plain;
};

constexpr std::array<Tag, 6> exifTags = {{
    {0x829a, u"ExposureTime"},
    {0x829d, u"FNumber"},
    {0x8827, u"ISOSpeedRatings", Shape::List},
    {0x9003, u"DateTimeOriginal"},
    {0x9214, u"SubjectArea", Shape::List},
    {0xa434, u"LensModel"},
}};

constexpr std::array<Tag, 11> fujiTags = {{
    {0x1003, u"Saturation"},
    {0x100a, u"WhiteBalanceFineTune", Shape::List},
    {0x1040, u"ShadowTone"},
    {0x1041, u"HighlightTone"},
    {0x1047, u"GrainEffectRoughness"},
    {0x1048, u"ColorChromeEffect"},
    {0x104c, u"GrainEffectSize"},
    {0x104e, u"ColorChromeFXBlue"},
    {0x1401, u"FilmMode"},
    {0x1402, u"DynamicRangeSetting"},
    {0x1403, u"DevelopmentDynamicRange"},
}};

constexpr quint16 subfileTag = 0x00fe;
constexpr quint16 widthTag = 0x0100;
constexpr quint16 heightTag = 0x0101;
constexpr quint16 orientationTag = 0x0112;
constexpr quint16 subDirectoriesTag = 0x014a;
constexpr quint16 exifTag = 0x8769;
constexpr quint16 makerNoteTag = 0x927c;
constexpr quint16 pixelXTag = 0xa002;
constexpr quint16 pixelYTag = 0xa003;

constexpr quint16 panasonicMagic = 0x55;
constexpr quint16 sensorWidthTag = 0x0002;
constexpr quint16 sensorHeightTag = 0x0003;
constexpr quint16 panasonicSpeedTag = 0x0017;

template<size_t count>
PropertyDictionary named(const std::array<Tag, count> &tags, const TiffReader &tiff,
                         const Directory &directory)
{
    PropertyDictionary result;
    for (const auto &tag : tags) {
        const auto entry = directory.find(tag.number);
        const auto value = entry ? tiff.value(*entry, tag.shape) : QVariant();
        if (value.isValid()) {
            // The names live as long as the program: a copy of each would cost more than its value.
            result.insert(QString::fromRawData(tag.name.data(), tag.name.size()), value);
        }
    }
    return result;
}

/// The note begins with a name and the offset of its directory, is little-endian whatever the file
/// is, and counts its offsets from its own beginning.
std::optional<PropertyDictionary> fujiNote(const TiffReader &tiff, const Directory &exif)
{
    const auto entry = exif.find(makerNoteTag);
    const auto place = entry ? tiff.place(*entry) : std::nullopt;
    if (!place || tiff.reader().view(place->offset, 8) != "FUJIFILM") {
        return std::nullopt;
    }
    // To the end of the structure: some writers give the note's length too small.
    const auto end = tiff.range().offset + tiff.range().length;
    const TiffReader note(tiff.reader(), {place->offset, end - place->offset},
                          TiffReader::ByteOrder::Little);
    constexpr quint16 long32 = 4;
    const auto first = note.integer(TiffReader::Entry{0, long32, 1, 8});
    const auto directory = first ? note.directory(*first) : std::nullopt;
    return directory ? named(fujiTags, note, *directory) : PropertyDictionary();
}

void addExif(PropertyDictionary &properties, const TiffReader &tiff, const Directory &exif)
{
    properties.insert(u"{Exif}"_s, named(exifTags, tiff, exif));
    if (const auto fuji = fujiNote(tiff, exif)) {
        properties.insert(u"{MakerFuji}"_s, *fuji);
    }
}

/// Panasonic's older files keep the speed among the sensor's tags only.
void addPanasonicSpeed(PropertyDictionary &properties, const TiffReader &tiff,
                       const Directory &main)
{
    auto exif = properties.value(u"{Exif}"_s).toMap();
    const auto speed = tiff.integer(main.find(panasonicSpeedTag));
    if (tiff.magic() == panasonicMagic && speed && !exif.contains(u"ISOSpeedRatings"_s)) {
        exif.insert(u"ISOSpeedRatings"_s, QVariantList{*speed});
        properties.insert(u"{Exif}"_s, exif);
    }
}

std::optional<Directory> exifDirectory(const TiffReader &tiff, const Directory &main)
{
    const auto offset = tiff.integer(main.find(exifTag));
    return offset ? tiff.directory(*offset) : std::nullopt;
}

struct PixelSize {
    std::optional<qint64> width;
    std::optional<qint64> height;

    [[nodiscard]] bool isKnown() const { return width && height && *width > 0 && *height > 0; }
};

PixelSize sizeIn(const TiffReader &tiff, const Directory &directory, quint16 width, quint16 height)
{
    return {tiff.integer(directory.find(width)), tiff.integer(directory.find(height))};
}

bool isReduced(const TiffReader &tiff, const Directory &directory)
{
    return (tiff.integer(directory.find(subfileTag)).value_or(0) & 1) != 0;
}

/// The first directory that is no smaller version of another: RAW files often begin with a preview
/// and keep the sensor image in a directory below it.
PixelSize mainSize(const TiffReader &tiff, const Directory &main)
{
    if (tiff.magic() == panasonicMagic) {
        return sizeIn(tiff, main, sensorWidthTag, sensorHeightTag);
    }
    const auto first = sizeIn(tiff, main, widthTag, heightTag);
    if (first.isKnown() && !isReduced(tiff, main)) {
        return first;
    }
    const auto offsets = tiff.integers(main.find(subDirectoriesTag));
    constexpr qsizetype mostDirectories = 16;
    for (const auto offset : offsets.first(std::min(offsets.size(), mostDirectories))) {
        const auto directory = tiff.directory(offset);
        if (!directory || isReduced(tiff, *directory)) {
            continue;
        }
        const auto size = sizeIn(tiff, *directory, widthTag, heightTag);
        if (size.isKnown()) {
            return size;
        }
    }
    return first;
}

/// Canon's CR2 has a reduced picture in front and does not say so.
bool isCr2(const TiffReader &tiff)
{
    return tiff.reader().view(tiff.range().offset + 8, 3) == QByteArrayView("CR\x02", 3);
}

} // namespace

PropertyDictionary ExifProperties::fromMain(const TiffReader &tiff)
{
    PropertyDictionary properties;
    const auto main = tiff.directory(tiff.firstDirectory());
    if (!main) {
        return properties;
    }
    if (const auto orientation = tiff.integer(main->find(orientationTag))) {
        properties.insert(u"Orientation"_s, *orientation);
    }
    if (const auto exif = exifDirectory(tiff, *main)) {
        addExif(properties, tiff, *exif);
    }
    addPanasonicSpeed(properties, tiff, *main);
    return properties;
}

PropertyDictionary ExifProperties::fromExif(const TiffReader &tiff)
{
    PropertyDictionary properties;
    if (const auto exif = tiff.directory(tiff.firstDirectory())) {
        addExif(properties, tiff, *exif);
    }
    return properties;
}

void ExifProperties::addPixelSize(PropertyDictionary &properties, const TiffReader &tiff)
{
    const auto main = tiff.directory(tiff.firstDirectory());
    if (!main) {
        return;
    }
    auto size = mainSize(tiff, *main);
    if (!size.isKnown() || isCr2(tiff)) {
        const auto exif = exifDirectory(tiff, *main);
        const auto named = exif ? sizeIn(tiff, *exif, pixelXTag, pixelYTag) : PixelSize();
        size = named.isKnown() ? named : size;
    }
    addPixelSize(properties, size.width, size.height);
}

void ExifProperties::addPixelSize(PropertyDictionary &properties, std::optional<qint64> width,
                                  std::optional<qint64> height)
{
    if (width && height && *width > 0 && *height > 0) {
        properties.insert(u"PixelWidth"_s, *width);
        properties.insert(u"PixelHeight"_s, *height);
    }
}
