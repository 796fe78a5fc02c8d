// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffDecoder.h"

#include "platform/imageio/ColorProfile.h"
#include "platform/imageio/FittedPicture.h"
#include "platform/imageio/JpegDecoder.h"
#include "platform/imageio/TiffRows.h"

#include <vector>

namespace {

constexpr qint64 mostPixels = 400'000'000;
/// For the picture and what the decoder needs beside it: a gibibyte, less what the program is.
constexpr qint64 mostMemory = qint64{960} * 1024 * 1024;
constexpr qint64 leastWorkingMemory = qint64{256} * 1024 * 1024;

QByteArray readProfile(const InputFile &file, const TiffPictures::Picture &picture)
{
    constexpr qint64 largestProfile = qint64{4} * 1024 * 1024;
    if (!picture.profile || picture.profile->length > largestProfile) {
        return {};
    }
    return file.bytes(picture.profile->offset, picture.profile->length);
}

QImage decodePicture(const InputFile &file, const TiffPictures::Picture &picture, int orientation,
                     std::optional<int> maxPixel, const QByteArray &profile)
{
    const auto target = JpegDecoder::fitted(picture.size, maxPixel);
    const auto bytes = qint64{4} * target.width() * target.height();
    if (qint64{picture.size.width()} * picture.size.height() > mostPixels ||
        bytes > mostMemory - leastWorkingMemory) {
        return {};
    }
    const auto floating =
        profile.isEmpty() ? TiffColors::Floating::Light : TiffColors::Floating::Code;
    const auto rows = TiffRows::open(file, picture.directory, mostMemory - bytes, floating);
    if (!rows || rows->size() != picture.size) {
        return {};
    }
    FittedPicture result(picture.size, target, orientation);
    if (!result.isValid()) {
        return {};
    }
    bool hasContent = false;
    std::vector<QRgb> row(size_t(picture.size.width()));
    for (int number = 0; number < picture.size.height(); ++number) {
        hasContent = rows->read(number, row.data()) || hasContent;
        result.addRow(row.data());
    }
    return hasContent ? ColorProfile::toSrgb(result.take(), profile) : QImage();
}

} // namespace

QImage TiffDecoder::decode(const InputFile &file, const TiffPictures &pictures,
                           std::optional<int> maxPixel)
{
    const auto own = readProfile(file, pictures.main);
    const auto profile =
        !pictures.main.profile && pictures.isAdobeRgb ? ColorProfile::adobeRgb() : own;
    for (const auto &smaller : pictures.smaller) {
        if (smaller.size.width() < pictures.main.size.width() &&
            JpegDecoder::standsFor(smaller.size, pictures.main.size, maxPixel) &&
            (!smaller.profile || readProfile(file, smaller) == own)) {
            const auto image =
                decodePicture(file, smaller, pictures.orientation, maxPixel, profile);
            if (!image.isNull()) {
                return image;
            }
        }
    }
    return decodePicture(file, pictures.main, pictures.orientation, maxPixel, profile);
}
