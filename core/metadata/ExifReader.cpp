// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/metadata/ExifReader.h"

#include "core/metadata/FujiMakerNote.h"
#include "core/model/Pairing.h"
#include "platform/files/CreationDate.h"
#include "platform/imageio/ImageSource.h"

#include <QTimeZone>

#include <algorithm>

using namespace Qt::StringLiterals;

/// The decimal number that @p digits are, or nothing if they are anything else.
static std::optional<int> number(QStringView digits)
{
    const auto isDigit = [](QChar character) { return character >= u'0' && character <= u'9'; };
    if (!std::ranges::all_of(digits, isDigit)) {
        return std::nullopt;
    }
    return digits.toInt();
}

/// "yyyy:MM:dd HH:mm:ss" of EXIF 2.32, 4.6.5. By hand: QDateTime would take the digits for local
/// time, in which some of them do not exist.
static std::optional<QDateTime> parseDate(const QString &text)
{
    const QStringView view(text);
    const auto separator = [&view](qsizetype at, char16_t expected) {
        return view[at] == expected;
    };
    if (view.size() != 19 || !separator(4, u':') || !separator(7, u':') || !separator(10, u' ') ||
        !separator(13, u':') || !separator(16, u':')) {
        return std::nullopt;
    }
    const auto year = number(view.sliced(0, 4));
    const auto month = number(view.sliced(5, 2));
    const auto dayOfMonth = number(view.sliced(8, 2));
    const auto hour = number(view.sliced(11, 2));
    const auto minute = number(view.sliced(14, 2));
    const auto second = number(view.sliced(17, 2));
    if (!year || !month || !dayOfMonth || !hour || !minute || !second) {
        return std::nullopt;
    }
    const QDate day(*year, *month, *dayOfMonth);
    const QTime time(*hour, *minute, *second);
    // Checked one by one: QDateTime would take a time that does not exist for midnight.
    if (!day.isValid() || !time.isValid()) {
        return std::nullopt;
    }
    return QDateTime(day, time, Qt::UTC);
}

static std::optional<qint64> firstIso(const PropertyDictionary &exif)
{
    const auto ratings = integerList(exif, u"ISOSpeedRatings"_s);
    return ratings && !ratings->isEmpty() ? std::optional(ratings->first()) : std::nullopt;
}

static std::optional<QPointF> subjectCentre(const PropertyDictionary &exif)
{
    const auto area = integerList(exif, u"SubjectArea"_s);
    if (!area || area->size() < 2) {
        return std::nullopt;
    }
    return QPointF(static_cast<double>(area->at(0)), static_cast<double>(area->at(1)));
}

static std::optional<QDateTime> captureDate(const PropertyDictionary &exif)
{
    const auto text = textValue(exif, u"DateTimeOriginal"_s);
    return text ? parseDate(*text) : std::nullopt;
}

std::optional<ImageMetadata> ExifReader::read(const std::filesystem::path &url) const
{
    if (Pairing::videoExtensions().contains(Pairing::extensionOf(url))) {
        return ImageMetadata{.captureDate = creationDate(url)};
    }
    const auto source = ImageSource::open(url);
    const auto properties = source ? source->properties() : std::nullopt;
    return properties ? std::optional(metadata(*properties)) : std::nullopt;
}

ImageMetadata ExifReader::metadata(const PropertyDictionary &properties)
{
    const auto exif = dictionary(properties, u"{Exif}"_s).value_or(PropertyDictionary());
    return {
        .pixelWidth = integerValue(properties, u"PixelWidth"_s),
        .pixelHeight = integerValue(properties, u"PixelHeight"_s),
        .aperture = doubleValue(exif, u"FNumber"_s),
        .exposureTime = doubleValue(exif, u"ExposureTime"_s),
        .iso = firstIso(exif),
        .lensModel = textValue(exif, u"LensModel"_s),
        .captureDate = captureDate(exif),
        .subjectArea = subjectCentre(exif),
        .orientation = integerValue(properties, u"Orientation"_s),
        .fuji = FujiMakerNote::parse(properties),
    };
}
