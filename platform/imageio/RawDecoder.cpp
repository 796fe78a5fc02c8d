// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/RawDecoder.h"

#include "platform/imageio/DcfColors.h"
#include "platform/imageio/EmbeddedJpegs.h"
#include "platform/imageio/FileProperties.h"
#include "platform/imageio/FittedPicture.h"
#include "platform/imageio/JpegDecoder.h"
#include "platform/imageio/LibRawThumbnail.h"
#include "platform/imageio/RawDevelopment.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Candidate = EmbeddedJpegs::Candidate;

qint64 area(const Candidate &candidate)
{
    return qint64{candidate.size.width()} * candidate.size.height();
}

int longest(QSize size)
{
    return std::max(size.width(), size.height());
}

/// The smallest candidate that may stand for @p largest.
Candidate choose(const QList<Candidate> &candidates, const Candidate &largest,
                 std::optional<int> maxPixel)
{
    auto chosen = largest;
    for (const auto &candidate : candidates) {
        if (area(candidate) < area(chosen) &&
            JpegDecoder::standsFor(candidate.size, largest.size, maxPixel)) {
            chosen = candidate;
        }
    }
    return chosen;
}

QSize sensorSize(const PropertyDictionary &properties)
{
    return {static_cast<int>(integerValue(properties, u"PixelWidth"_s).value_or(0)),
            static_cast<int>(integerValue(properties, u"PixelHeight"_s).value_or(0))};
}

/// Cameras crop a little when they develop, and one edge more when another aspect ratio is set. Of
/// a sensor whose size is unknown no picture counts as whole.
bool isFullSize(QSize picture, QSize sensor)
{
    const auto shortest = [](QSize size) { return std::min(size.width(), size.height()); };
    constexpr double most = 0.9;
    return !sensor.isEmpty() && (longest(picture) >= most * longest(sensor) ||
                                 shortest(picture) >= most * shortest(sensor));
}

/// The RAW file's orientation holds for its previews, but for one that stands upright already
/// where the sensor's image lies.
int orientationFor(QSize picture, const PropertyDictionary &properties, int otherwise = 1)
{
    const auto code = integerValue(properties, u"Orientation"_s).value_or(otherwise);
    const auto sensor = sensorSize(properties);
    const bool turnsOnSide = code >= 5 && code <= 8;
    const bool sensorLies = sensor.width() > sensor.height();
    const bool pictureStands = picture.height() > picture.width();
    if (turnsOnSide && sensorLies && pictureStands) {
        return 1;
    }
    return code >= 1 && code <= 8 ? static_cast<int>(code) : 1;
}

/// The embedded picture that is kept as plain pixels.
QImage fromBitmap(const InputFile &file, const PropertyDictionary &properties, int maxPixel,
                  int leastEdge)
{
    const auto stored = LibRawThumbnail::bitmap(file, leastEdge);
    if (stored.isNull()) {
        return {};
    }
    FittedPicture picture(stored.size(), JpegDecoder::fitted(stored.size(), maxPixel),
                          orientationFor(stored.size(), properties));
    for (int row = 0; row < stored.height(); ++row) {
        picture.addRow(reinterpret_cast<const QRgb *>(stored.constScanLine(row)));
    }
    return picture.take();
}

} // namespace

QImage RawDecoder::decode(const InputFile &file, FileKind kind, std::optional<int> maxPixel)
{
    PagedReader reader(file);
    const auto candidates = EmbeddedJpegs::find(reader, kind);
    const auto properties = FileProperties::read(file).value_or(PropertyDictionary());
    const auto fromJpeg = [&](const Candidate &candidate) {
        return JpegDecoder::decode(
            file, candidate.range, maxPixel, orientationFor(candidate.size, properties),
            JpegDecoder::Preview::Allowed,
            DcfColors::areAdobeRgb(reader, kind) ? JpegDecoder::Untagged::AdobeRgb
                                                 : JpegDecoder::Untagged::Srgb);
    };

    std::optional<Candidate> largest;
    if (!candidates.isEmpty()) {
        largest = *std::ranges::max_element(candidates, {}, area);
    }
    QImage image;
    if (largest && (isFullSize(largest->size, sensorSize(properties)) ||
                    (maxPixel && longest(largest->size) >= *maxPixel))) {
        image = fromJpeg(choose(candidates, *largest, maxPixel));
    } else if (!largest && maxPixel) {
        image = fromBitmap(file, properties, *maxPixel, *maxPixel);
    }
    if (image.isNull()) {
        image = RawDevelopment::develop(file, maxPixel, [&](QSize stored, int code) {
            return orientationFor(stored, properties, code);
        });
    }
    if (image.isNull() && maxPixel) {
        image = largest ? fromJpeg(*largest) : fromBitmap(file, properties, *maxPixel, 1);
    }
    return image;
}
