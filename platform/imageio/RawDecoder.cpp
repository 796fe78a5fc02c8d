// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/RawDecoder.h"

#include "platform/imageio/EmbeddedJpegs.h"
#include "platform/imageio/FileProperties.h"
#include "platform/imageio/JpegDecoder.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Candidate = EmbeddedJpegs::Candidate;

qint64 area(const Candidate &candidate)
{
    return qint64{candidate.size.width()} * candidate.size.height();
}

/// The smallest candidate that may stand for the largest.
Candidate choose(const QList<Candidate> &candidates, std::optional<int> maxPixel)
{
    const auto largest = *std::ranges::max_element(candidates, {}, area);
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
    const auto longest = [](QSize size) { return std::max(size.width(), size.height()); };
    const auto shortest = [](QSize size) { return std::min(size.width(), size.height()); };
    constexpr double most = 0.9;
    return !sensor.isEmpty() && (longest(picture) >= most * longest(sensor) ||
                                 shortest(picture) >= most * shortest(sensor));
}

/// The RAW file's orientation holds for its previews, but for one that stands upright already
/// where the sensor's image lies.
int orientationFor(QSize picture, const PropertyDictionary &properties)
{
    const auto code = integerValue(properties, u"Orientation"_s).value_or(1);
    const auto sensor = sensorSize(properties);
    const bool turnsOnSide = code >= 5 && code <= 8;
    const bool sensorLies = sensor.width() > sensor.height();
    const bool pictureStands = picture.height() > picture.width();
    if (turnsOnSide && sensorLies && pictureStands) {
        return 1;
    }
    return code >= 1 && code <= 8 ? static_cast<int>(code) : 1;
}

} // namespace

QImage RawDecoder::decode(const InputFile &file, FileKind kind, std::optional<int> maxPixel)
{
    PagedReader reader(file);
    const auto candidates = EmbeddedJpegs::find(reader, kind);
    if (candidates.isEmpty()) {
        return {};
    }
    const auto properties = FileProperties::read(file).value_or(PropertyDictionary());
    const auto chosen = choose(candidates, maxPixel);
    if (!maxPixel && !isFullSize(chosen.size, sensorSize(properties))) {
        return {}; // TODO: no whole picture of such files until the sensor's data is developed
    }
    return JpegDecoder::decode(file, chosen.range, maxPixel,
                               orientationFor(chosen.size, properties));
}
