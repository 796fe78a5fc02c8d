// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/Exiv2Properties.h"

#include <exiv2/exiv2.hpp>

#include <mutex>

using namespace Qt::StringLiterals;

namespace {

/// These are files of cameras long gone: the largest have some 10 MiB.
constexpr qint64 largestFile = qint64{64} * 1024 * 1024;

/// Exiv2 asks for this around the registration of XMP namespaces. Recursive, as what its
/// documentation recommends is.
void lockNamespaces(void *mutex, bool lock)
{
    auto &namespaces = *static_cast<std::recursive_mutex *>(mutex);
    lock ? namespaces.lock() : namespaces.unlock();
}

/// Exiv2's XMP toolkit is not initialised by itself when two threads meet there first, and its
/// warnings go to the terminal by default.
void prepare()
{
    static std::recursive_mutex namespaces;
    [[maybe_unused]] static const bool prepared = [] {
        Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
        return Exiv2::XmpParser::initialize(lockNamespaces, &namespaces);
    }();
}

QVariant element(const Exiv2::Value &value, long index)
{
    switch (value.typeId()) {
    case Exiv2::unsignedByte:
    case Exiv2::signedByte:
    case Exiv2::unsignedShort:
    case Exiv2::signedShort:
    case Exiv2::unsignedLong:
    case Exiv2::signedLong:
        return qint64{value.toLong(index)};
    case Exiv2::unsignedRational:
    case Exiv2::signedRational: {
        const auto [numerator, denominator] = value.toRational(index);
        return denominator != 0 ? QVariant(double{1} * numerator / denominator) : QVariant();
    }
    case Exiv2::tiffFloat:
    case Exiv2::tiffDouble:
        return double{value.toFloat(index)};
    case Exiv2::asciiString:
        return QString::fromStdString(value.toString());
    default:
        return {};
    }
}

void add(PropertyDictionary &properties, const Exiv2::ExifData &exif, const char *key,
         const QString &name)
{
    const auto found = exif.findKey(Exiv2::ExifKey(key));
    if (found == exif.end() || found->count() == 0) {
        return;
    }
    const auto value = element(found->value(), 0);
    if (value.isValid()) {
        properties.insert(name, value);
    }
}

void addList(PropertyDictionary &properties, const Exiv2::ExifData &exif, const char *key,
             const QString &name)
{
    constexpr long mostElements = 64;
    const auto found = exif.findKey(Exiv2::ExifKey(key));
    if (found == exif.end() || found->count() > mostElements) {
        return;
    }
    QVariantList list;
    for (long index = 0; index < found->count(); ++index) {
        list.append(element(found->value(), index));
    }
    properties.insert(name, list);
}

void addPixels(PropertyDictionary &properties, const QString &name, qint64 pixels)
{
    if (pixels > 0) {
        properties.insert(name, pixels);
    }
}

PropertyDictionary convert(const Exiv2::Image &image)
{
    const auto &data = image.exifData();
    PropertyDictionary exif;
    add(exif, data, "Exif.Photo.ExposureTime", u"ExposureTime"_s);
    add(exif, data, "Exif.Photo.FNumber", u"FNumber"_s);
    add(exif, data, "Exif.Photo.DateTimeOriginal", u"DateTimeOriginal"_s);
    add(exif, data, "Exif.Photo.LensModel", u"LensModel"_s);
    addList(exif, data, "Exif.Photo.ISOSpeedRatings", u"ISOSpeedRatings"_s);
    addList(exif, data, "Exif.Photo.SubjectArea", u"SubjectArea"_s);
    PropertyDictionary properties = {{u"{Exif}"_s, exif}};
    add(properties, data, "Exif.Image.Orientation", u"Orientation"_s);
    addPixels(properties, u"PixelWidth"_s, image.pixelWidth());
    addPixels(properties, u"PixelHeight"_s, image.pixelHeight());
    return properties;
}

} // namespace

std::optional<PropertyDictionary> Exiv2Properties::read(const InputFile &file)
{
    if (file.size() > largestFile) {
        return std::nullopt;
    }
    prepare();
    const auto bytes = file.bytes(0, file.size());
    try {
        const auto image =
            Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte *>(bytes.constData()),
                                      static_cast<long>(bytes.size()));
        image->readMetadata();
        return convert(*image);
    } catch (const std::exception &) {
        return std::nullopt; // damaged, which for us is a file without properties
    }
}
