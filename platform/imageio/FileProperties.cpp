// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/FileProperties.h"

#include "platform/imageio/BoxReader.h"
#include "platform/imageio/ExifProperties.h"
#include "platform/imageio/Exiv2Properties.h"
#include "platform/imageio/FileKind.h"
#include "platform/imageio/HeifItems.h"
#include "platform/imageio/JpegMarkers.h"
#include "platform/imageio/RafHeader.h"
#include "platform/imageio/X3fDirectory.h"

using namespace Qt::StringLiterals;

namespace {

using Properties = std::optional<PropertyDictionary>;

/// "Orientation", "{Exif}" and "{MakerFuji}" of the EXIF block that a file embeds.
PropertyDictionary fromBlock(PagedReader &reader, std::optional<ByteRange> block)
{
    const auto tiff = block ? TiffReader::open(reader, *block) : std::nullopt;
    return tiff ? ExifProperties::fromMain(*tiff) : PropertyDictionary();
}

Properties jpegProperties(PagedReader &reader, ByteRange range,
                          JpegMarkers::Until until = JpegMarkers::Until::ExifAndSize)
{
    const auto markers = JpegMarkers::read(reader, range, until);
    if (!markers || (!markers->hasFrame && !markers->exif)) {
        return std::nullopt;
    }
    auto properties = fromBlock(reader, markers->exif);
    ExifProperties::addPixelSize(properties, markers->width, markers->height);
    return properties;
}

/// The EXIF block is the embedded JPEG's; only the sensor's size is the file's own.
Properties rafProperties(PagedReader &reader)
{
    const auto header = RafHeader::read(reader);
    if (!header) {
        return std::nullopt;
    }
    using Until = JpegMarkers::Until;
    const auto until = header->width ? Until::Exif : Until::ExifAndSize;
    auto properties = jpegProperties(reader, header->jpeg, until).value_or(PropertyDictionary());
    ExifProperties::addPixelSize(properties, header->width, header->height);
    return properties;
}

/// As with RAF; of several embedded JPEGs only one has an EXIF block.
Properties x3fProperties(PagedReader &reader)
{
    const auto directory = X3fDirectory::read(reader);
    if (!directory) {
        return std::nullopt;
    }
    PropertyDictionary properties;
    for (const auto &jpeg : directory->jpegs) {
        const auto markers = JpegMarkers::read(reader, jpeg, JpegMarkers::Until::Exif);
        if (markers && markers->exif) {
            properties = fromBlock(reader, markers->exif);
            break;
        }
    }
    ExifProperties::addPixelSize(properties, directory->width, directory->height);
    return properties;
}

/// Panasonic's older files keep EXIF in the embedded JPEG alone.
void addFromEmbeddedJpeg(PropertyDictionary &properties, const TiffReader &tiff)
{
    constexpr quint16 jpegFromRaw = 0x002e;
    const auto main = tiff.directory(tiff.firstDirectory());
    const auto entry = main ? main->find(jpegFromRaw) : std::nullopt;
    const auto place = entry ? tiff.place(*entry) : std::nullopt;
    const auto embedded = place ? jpegProperties(tiff.reader(), *place) : std::nullopt;
    if (!embedded) {
        return;
    }
    auto exif = dictionary(*embedded, u"{Exif}"_s).value_or(PropertyDictionary());
    exif.insert(dictionary(properties, u"{Exif}"_s).value_or(PropertyDictionary()));
    properties.insert(u"{Exif}"_s, exif);
}

Properties tiffProperties(PagedReader &reader)
{
    const auto tiff = TiffReader::open(reader, {0, reader.size()});
    if (!tiff || !tiff->directory(tiff->firstDirectory())) {
        return std::nullopt;
    }
    auto properties = ExifProperties::fromMain(*tiff);
    ExifProperties::addPixelSize(properties, *tiff);
    addFromEmbeddedJpeg(properties, *tiff);
    return properties;
}

Properties heifProperties(PagedReader &reader)
{
    const auto items = HeifItems::read(reader);
    if (!items) {
        return std::nullopt;
    }
    auto properties = fromBlock(reader, items->exif);
    ExifProperties::addPixelSize(properties, items->width, items->height);
    // What EXIF says about it is void in HEIF: decoders follow the item's properties alone.
    properties.insert(u"Orientation"_s, qint64{items->orientation});
    return properties;
}

/// The directories lie in a box of Canon's own below "moov" (known from the public description of
/// the format by L. Aubert; Canon published none).
Properties cr3Properties(PagedReader &reader)
{
    static const auto canon = QByteArray::fromHex("85c0b687820f11e08111f4ce462b6a48");
    const auto movie = BoxReader::find(BoxReader::boxes(reader, {0, reader.size()}), "moov");
    if (!movie) {
        return std::nullopt;
    }
    const auto inMovie = BoxReader::boxes(reader, movie->content);
    for (const auto &box : inMovie) {
        if (box.uuid != canon) {
            continue;
        }
        const auto boxes = BoxReader::boxes(reader, box.content);
        const auto mainBox = BoxReader::find(boxes, "CMT1");
        const auto main = mainBox ? TiffReader::open(reader, mainBox->content) : std::nullopt;
        if (!main) {
            return std::nullopt;
        }
        auto properties = ExifProperties::fromMain(*main);
        ExifProperties::addPixelSize(properties, *main);
        const auto exifBox = BoxReader::find(boxes, "CMT2");
        if (const auto exif = exifBox ? TiffReader::open(reader, exifBox->content) : std::nullopt) {
            properties.insert(ExifProperties::fromExif(*exif));
        }
        return properties;
    }
    return std::nullopt;
}

Properties propertiesOf(const InputFile &file)
{
    PagedReader reader(file);
    switch (fileKind(reader)) {
    case FileKind::Jpeg:
        return jpegProperties(reader, {0, file.size()});
    case FileKind::Raf:
        return rafProperties(reader);
    case FileKind::Tiff:
        return tiffProperties(reader);
    case FileKind::Media:
        return heifProperties(reader);
    case FileKind::Cr3:
        return cr3Properties(reader);
    case FileKind::Ciff:
    case FileKind::Other:
        return Exiv2Properties::read(file);
    case FileKind::X3f:
        return x3fProperties(reader);
    case FileKind::Unknown:
        break;
    }
    return std::nullopt;
}

} // namespace

std::optional<PropertyDictionary> FileProperties::read(const InputFile &file)
{
    file.setReadAhead(InputFile::ReadAhead::None);
    auto properties = propertiesOf(file);
    file.setReadAhead(InputFile::ReadAhead::Usual);
    return properties;
}
