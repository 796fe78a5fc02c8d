// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffPictures.h"

#include "platform/imageio/DcfColors.h"
#include "platform/imageio/TiffReader.h"

#include <QSet>

#include <algorithm>

namespace {

constexpr quint16 subfileTag = 0x00fe;
constexpr quint16 widthTag = 0x0100;
constexpr quint16 heightTag = 0x0101;
constexpr quint16 photometricTag = 0x0106;
constexpr quint16 stripOffsetsTag = 0x0111;
constexpr quint16 orientationTag = 0x0112;
constexpr quint16 tileOffsetsTag = 0x0144;
constexpr quint16 subDirectoriesTag = 0x014a;
constexpr quint16 jpegOffsetTag = 0x0201;
constexpr quint16 profileTag = 0x8773;

/// Far more than pyramids have levels; of a long document the first page is enough.
constexpr qsizetype mostDirectories = 32;

/// A value of "PhotometricInterpretation" that is a sensor's: a colour filter array's, and DNG's
/// for linear data.
bool isSensors(qint64 photometric)
{
    return photometric == 32803 || photometric == 34892;
}

/// Tags that only the RAW files of a maker have in their first directory: DNG's version, and those
/// of Leaf, Kodak, Imacon, Sinar and Hasselblad, as dcraw's documentation of tags gives them.
constexpr quint16 rawTags[] = {0xc612, 0x8606, 0x8290, 0xb4c3, 0xb4c7, 0xc516, 0xc517, 0xc51b};

/// RAW files that look like TIFF files but for a mark behind the header: Canon's and Phase One's.
bool hasRawMark(const TiffReader &tiff)
{
    const auto mark = tiff.reader().bytes(tiff.range().offset + 8, 4);
    return mark.startsWith("CR") || mark == "IIII" || mark == "MMMM";
}

bool isReduced(const TiffReader &tiff, const TiffReader::Directory &directory)
{
    return (tiff.integer(directory.find(subfileTag)).value_or(0) & 1) != 0;
}

std::optional<TiffPictures::Picture> pictureIn(const TiffReader &tiff, qint64 offset,
                                               const TiffReader::Directory &directory)
{
    constexpr qint64 longestEdge = 1'000'000;
    const auto width = tiff.integer(directory.find(widthTag)).value_or(0);
    const auto height = tiff.integer(directory.find(heightTag)).value_or(0);
    const bool hasData = directory.find(stripOffsetsTag) || directory.find(tileOffsetsTag) ||
                         directory.find(jpegOffsetTag);
    if (!hasData || width < 1 || height < 1 || width > longestEdge || height > longestEdge) {
        return std::nullopt;
    }
    TiffPictures::Picture picture = {offset, {static_cast<int>(width), static_cast<int>(height)}};
    const auto code = tiff.integer(directory.find(orientationTag)).value_or(0);
    if (code >= 1 && code <= 8) {
        picture.orientation = static_cast<int>(code);
    }
    const auto profile = directory.find(profileTag);
    picture.profile = profile ? tiff.place(*profile) : std::nullopt;
    return picture;
}

} // namespace

std::optional<TiffPictures> TiffPictures::find(PagedReader &reader)
{
    constexpr quint16 plainMagics[] = {42, 43};
    const auto tiff = TiffReader::open(reader, {0, reader.size()});
    const auto first = tiff ? tiff->directory(tiff->firstDirectory()) : std::nullopt;
    if (!first || std::ranges::find(plainMagics, tiff->magic()) == std::end(plainMagics) ||
        hasRawMark(*tiff) ||
        std::ranges::any_of(rawTags, [&](quint16 tag) { return first->find(tag).has_value(); })) {
        return std::nullopt;
    }

    std::optional<TiffPictures> result;
    QList<Picture> reduced;
    QList<qint64> ofMain;     // the directories within the picture's own
    QSet<qint64> ofOthers;    // those within others behind it
    bool hasNextPage = false; // what is smaller from there on is so of another picture
    const auto take = [&](const Picture &picture) {
        result.emplace().main = picture;
        const auto code = tiff->integer(first->find(orientationTag)).value_or(1);
        result->orientation =
            picture.orientation.value_or(code >= 1 && code <= 8 ? static_cast<int>(code) : 1);
    };

    QList<qint64> waiting = {tiff->firstDirectory()};
    QSet<qint64> seen;
    bool isComplete = true;
    while (!waiting.isEmpty() && seen.size() < mostDirectories) {
        const auto offset = waiting.takeFirst();
        if (seen.contains(offset)) {
            continue;
        }
        seen.insert(offset);
        const auto directory = tiff->directory(offset);
        if (!directory) {
            isComplete = false;
            continue;
        }
        if (isSensors(tiff->integer(directory->find(photometricTag)).value_or(0))) {
            return std::nullopt;
        }
        if (const auto picture = pictureIn(*tiff, offset, *directory)) {
            const bool isOfMain = ofMain.contains(offset);
            if (isReduced(*tiff, *directory)) {
                if (isOfMain || (!hasNextPage && !ofOthers.contains(offset))) {
                    reduced.append(*picture);
                }
            } else if (!result) {
                take(*picture);
                reduced.clear(); // those in front are of something else
            } else if (!isOfMain) {
                hasNextPage = true;
            }
        }
        const auto within =
            tiff->integers(directory->find(subDirectoriesTag)).mid(0, mostDirectories);
        if (result && result->main.directory == offset) {
            ofMain = within;
        } else if (result) {
            ofOthers.unite({within.begin(), within.end()});
        }
        waiting = within + waiting;
        if (directory->next > 0) {
            waiting.append(directory->next);
        }
    }
    if (!result && isComplete && reduced.size() == 1 && seen.size() == 1) {
        take(reduced.takeFirst()); // the only one: it is a smaller version of nothing
    }
    if (result) {
        reduced.removeIf([&](const Picture &picture) {
            return picture.orientation.value_or(result->orientation) != result->orientation;
        });
        std::ranges::sort(reduced, {}, [](const Picture &picture) { return picture.size.width(); });
        result->smaller = reduced;
        result->isAdobeRgb = DcfColors::areAdobeRgb(*tiff);
    }
    return result;
}
