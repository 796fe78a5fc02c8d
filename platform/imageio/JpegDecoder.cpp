// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/JpegDecoder.h"

#include "platform/imageio/ColorProfile.h"
#include "platform/imageio/DcfColors.h"
#include "platform/imageio/JpegMarkers.h"
#include "platform/imageio/JpegStream.h"
#include "platform/imageio/PagedReader.h"
#include "platform/imageio/Resampler.h"
#include "platform/imageio/RowRelay.h"
#include "platform/imageio/TiffReader.h"
#include "platform/imageio/UprightPicture.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr qint64 mostPixels = 400'000'000;
/// For the picture and what the decoder needs beside it: a gibibyte, less what the program is.
constexpr qint64 mostMemory = qint64{960} * 1024 * 1024;
constexpr qint64 leastWorkingMemory = qint64{64} * 1024 * 1024;
/// Smaller previews are visibly less than the picture at that size.
constexpr int smallestPreview = 256;
/// Of smaller pictures a second thread would not be worth its start.
constexpr qint64 fewestPixelsToShare = 1'000'000;

struct ExifBlock {
    int orientation = 1;
    bool isAdobeRgb = false;
    std::optional<ByteRange> thumbnail = {};
};

/// The orientation stands in the first directory, the thumbnail in the second (EXIF 2.32, 4.5.8).
ExifBlock readExif(PagedReader &reader, std::optional<ByteRange> block)
{
    constexpr quint16 orientationTag = 0x0112;
    constexpr quint16 thumbnailOffset = 0x0201;
    constexpr quint16 thumbnailLength = 0x0202;
    ExifBlock result;
    const auto tiff = block ? TiffReader::open(reader, *block) : std::nullopt;
    const auto main = tiff ? tiff->directory(tiff->firstDirectory()) : std::nullopt;
    if (!main) {
        return result;
    }
    const auto code = tiff->integer(main->find(orientationTag)).value_or(1);
    result.orientation = code >= 1 && code <= 8 ? static_cast<int>(code) : 1;
    result.isAdobeRgb = DcfColors::areAdobeRgb(*tiff);
    const auto second = main->next > 0 ? tiff->directory(main->next) : std::nullopt;
    const auto offset = second ? tiff->integer(second->find(thumbnailOffset)) : std::nullopt;
    const auto length = second ? tiff->integer(second->find(thumbnailLength)) : std::nullopt;
    if (offset && length && *offset > 0 && *length > 0 && *offset < block->length) {
        result.thumbnail = {block->offset + *offset, std::min(*length, block->length - *offset)};
    }
    return result;
}

/// The ICC profile out of its numbered parts (ICC.1:2010, B.4).
QByteArray readProfile(const InputFile &file, const QList<ByteRange> &segments)
{
    constexpr auto identifier = QByteArrayView("ICC_PROFILE\0", 12);
    constexpr qint64 headerSize = 14;
    constexpr qsizetype largestProfile = 4 * 1024 * 1024;
    QByteArray profile;
    for (const auto &segment : segments) {
        const auto part =
            segment.length > headerSize ? file.bytes(segment.offset, segment.length) : QByteArray();
        if (!part.startsWith(identifier)) {
            continue;
        }
        // Every writer stores the parts in their order.
        profile += QByteArrayView(part).sliced(headerSize);
        if (profile.size() > largestProfile) {
            return {};
        }
    }
    return profile;
}

/// The profile that the stream itself names; empty where it names none.
QByteArray ownProfile(const InputFile &file, const JpegMarkers &markers, const ExifBlock &exif)
{
    const auto profile = readProfile(file, markers.applicationData2);
    return profile.isEmpty() && exif.isAdobeRgb ? ColorProfile::adobeRgb() : profile;
}

/// The rows of @p stream, turned and scaled.
QImage decodeRows(JpegStream &stream, QSize target, int orientation)
{
    const auto full = stream.size();
    const auto bytes = qint64{4} * target.width() * target.height();
    if (bytes > mostMemory - leastWorkingMemory) {
        return {};
    }
    const int eighths = JpegDecoder::scaleFor(std::max(full.width(), full.height()),
                                              std::max(target.width(), target.height()));
    const auto decoded = stream.start(eighths, mostMemory - bytes);
    if (!decoded) {
        return {};
    }
    // The fast scales round up. A picture of the wanted length is not scaled for a pixel of
    // breadth.
    const bool fits =
        std::max(decoded->width(), decoded->height()) == std::max(target.width(), target.height());
    target = fits ? *decoded : target.boundedTo(*decoded);
    UprightPicture picture(target, orientation);
    if (!picture.isValid()) {
        return {};
    }
    if (*decoded == target) {
        while (stream.readRow(picture.nextRow())) {
            picture.rowWritten();
        }
        return picture.take();
    }
    Resampler resampler(*decoded, target, picture);
    if (qint64{decoded->width()} * decoded->height() < fewestPixelsToShare) {
        std::vector<QRgb> row(static_cast<size_t>(decoded->width()));
        while (stream.readRow(row.data())) {
            resampler.addRow(row.data());
        }
        return picture.take();
    }
    RowRelay relay(decoded->width(), [&](const QRgb *pixels) { resampler.addRow(pixels); });
    while (stream.readRow(relay.nextRow())) {
        relay.rowWritten();
    }
    relay.finish();
    return picture.take();
}

/// In sRGB, out of the colours of @p profile where the preview names none of its own.
QImage decodePreview(const InputFile &file, PagedReader &reader, const JpegMarkers &main,
                     std::optional<ByteRange> place, std::optional<int> maxPixel, int orientation,
                     const QByteArray &profile)
{
    const auto preview = place ? JpegMarkers::read(reader, *place) : std::nullopt;
    if (!preview || !preview->isPicture) {
        return {};
    }
    const QSize size(static_cast<int>(*preview->width), static_cast<int>(*preview->height));
    const QSize mainSize(static_cast<int>(*main.width), static_cast<int>(*main.height));
    if (!JpegDecoder::standsFor(size, mainSize, maxPixel)) {
        return {};
    }
    const auto image =
        JpegDecoder::decode(file, *place, maxPixel, orientation, JpegDecoder::Preview::Ignored);
    const auto own = ownProfile(file, *preview, readExif(reader, preview->exif));
    return own.isEmpty() ? ColorProfile::toSrgb(image, profile) : image;
}

} // namespace

int JpegDecoder::scaleFor(int longest, int target)
{
    for (const int eighths : {1, 2, 4}) {
        if ((qint64{longest} * eighths + 7) / 8 >= target) {
            return eighths;
        }
    }
    return 8;
}

QSize JpegDecoder::fitted(QSize size, std::optional<int> maxPixel)
{
    const int longest = std::max(size.width(), size.height());
    if (!maxPixel || longest <= *maxPixel) {
        return size;
    }
    const int bound = std::max(*maxPixel, 1);
    const auto scaled = [&](int edge) {
        return std::max(1, static_cast<int>(std::lround(double(edge) * bound / longest)));
    };
    return {scaled(size.width()), scaled(size.height())};
}

bool JpegDecoder::standsFor(QSize preview, QSize picture, std::optional<int> maxPixel)
{
    const int longest = std::max(preview.width(), preview.height());
    // Some programs scale a picture down and leave the larger one's preview in it.
    if (!maxPixel || longest < std::max(smallestPreview, *maxPixel) ||
        longest > std::max(picture.width(), picture.height())) {
        return false;
    }
    const double height = double(preview.width()) * picture.height() / picture.width();
    const double width = double(preview.height()) * picture.width() / picture.height();
    return std::abs(preview.height() - height) <= 1 || std::abs(preview.width() - width) <= 1;
}

QImage JpegDecoder::decode(const InputFile &file, ByteRange range, std::optional<int> maxPixel,
                           std::optional<int> orientation, Preview preview, Untagged untagged,
                           const std::optional<QByteArray> &replacingProfile)
{
    PagedReader reader(file);
    const auto markers = JpegMarkers::read(reader, range);
    if (!markers || !markers->isPicture || *markers->width * *markers->height > mostPixels) {
        return {};
    }
    const auto exif = readExif(reader, markers->exif);
    const int code = orientation.value_or(exif.orientation);
    auto profile = replacingProfile ? *replacingProfile : ownProfile(file, *markers, exif);
    if (!replacingProfile && profile.isEmpty() && untagged == Untagged::AdobeRgb) {
        profile = ColorProfile::adobeRgb();
    }
    if (preview == Preview::Allowed) {
        const auto small =
            decodePreview(file, reader, *markers, exif.thumbnail, maxPixel, code, profile);
        if (!small.isNull()) {
            return small;
        }
    }
    auto stream = JpegStream::open(file, range);
    if (!stream || qint64{stream->size().width()} * stream->size().height() > mostPixels) {
        return {};
    }
    return ColorProfile::toSrgb(decodeRows(*stream, fitted(stream->size(), maxPixel), code),
                                profile);
}
