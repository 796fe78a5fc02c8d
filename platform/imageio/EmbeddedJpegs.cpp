// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/EmbeddedJpegs.h"

#include "platform/imageio/Cr3Pictures.h"
#include "platform/imageio/JpegMarkers.h"
#include "platform/imageio/LibRawThumbnail.h"
#include "platform/imageio/RafHeader.h"
#include "platform/imageio/TiffReader.h"
#include "platform/imageio/X3fDirectory.h"

#include <QSet>

namespace {

using Candidates = QList<EmbeddedJpegs::Candidate>;

constexpr quint16 subfileTag = 0x00fe;
constexpr quint16 compressionTag = 0x0103;
constexpr quint16 photometricTag = 0x0106;
constexpr quint16 stripOffsetsTag = 0x0111;
constexpr quint16 stripLengthsTag = 0x0117;
constexpr quint16 subDirectoriesTag = 0x014a;
constexpr quint16 jpegOffsetTag = 0x0201;
constexpr quint16 jpegLengthTag = 0x0202;
constexpr quint16 dngVersionTag = 0xc612;
/// Panasonic's "JpgFromRaw".
constexpr quint16 panasonicJpegTag = 0x002e;

constexpr qsizetype mostDirectories = 32;

/// Adds the stream at @p range if it is a picture that can be shown.
void addCandidate(Candidates &candidates, PagedReader &reader, ByteRange range)
{
    // The place may be any number: the difference of some to the size would be none.
    if (range.offset <= 0 || range.offset >= reader.size() || range.length <= 0) {
        return;
    }
    range.length = std::min(range.length, reader.size() - range.offset);
    const auto markers = JpegMarkers::read(reader, range);
    if (markers && markers->isPicture) {
        candidates.append(
            {range, {static_cast<int>(*markers->width), static_cast<int>(*markers->height)}});
    }
}

void addFrom(Candidates &candidates, const TiffReader &tiff, const TiffReader::Directory &directory)
{
    const auto add = [&](quint16 offsetTag, quint16 lengthTag) {
        const auto offset = tiff.integer(directory.find(offsetTag));
        const auto length = tiff.integer(directory.find(lengthTag));
        if (offset && length) {
            addCandidate(candidates, tiff.reader(), {*offset, *length});
        }
    };
    add(jpegOffsetTag, jpegLengthTag);
    add(stripOffsetsTag, stripLengthsTag);
    const auto panasonic = directory.find(panasonicJpegTag);
    if (const auto place = panasonic ? tiff.place(*panasonic) : std::nullopt) {
        addCandidate(candidates, tiff.reader(), *place);
    }
}

/// A TIFF file whose first image is a plain picture: its thumbnail must not be shown in its place.
bool isPlainPicture(const TiffReader &tiff, const TiffReader::Directory &main)
{
    constexpr quint16 plainMagics[] = {42, 43};
    constexpr qint64 sensorPhotometrics = 32768; // those of sensor data lie above
    const bool plainMagic = std::ranges::find(plainMagics, tiff.magic()) != std::end(plainMagics);
    const bool canon = tiff.reader().bytes(8, 2) == "CR";
    const bool reduced = (tiff.integer(main.find(subfileTag)).value_or(0) & 1) != 0;
    const auto photometric = tiff.integer(main.find(photometricTag));
    return plainMagic && !canon && !reduced && !main.find(dngVersionTag) && photometric &&
           *photometric < sensorPhotometrics && main.find(compressionTag);
}

Candidates inTiff(PagedReader &reader)
{
    Candidates candidates;
    const auto tiff = TiffReader::open(reader, {0, reader.size()});
    const auto main = tiff ? tiff->directory(tiff->firstDirectory()) : std::nullopt;
    if (!main || isPlainPicture(*tiff, *main)) {
        return candidates;
    }
    QList<qint64> waiting = {tiff->firstDirectory()};
    QSet<qint64> seen;
    while (!waiting.isEmpty() && seen.size() < mostDirectories) {
        const auto offset = waiting.takeFirst();
        const auto directory = seen.contains(offset) ? std::nullopt : tiff->directory(offset);
        seen.insert(offset);
        if (!directory) {
            continue;
        }
        addFrom(candidates, *tiff, *directory);
        waiting += tiff->integers(directory->find(subDirectoriesTag)).mid(0, mostDirectories);
        if (directory->next > 0) {
            waiting.append(directory->next);
        }
    }
    // Olympus and some others keep the picture in the maker note.
    if (candidates.isEmpty()) {
        addCandidate(candidates, reader, LibRawThumbnail::find(reader.file()));
    }
    return candidates;
}

} // namespace

QList<EmbeddedJpegs::Candidate> EmbeddedJpegs::find(PagedReader &reader, FileKind kind)
{
    Candidates candidates;
    switch (kind) {
    case FileKind::Tiff:
        return inTiff(reader);
    case FileKind::Raf:
        if (const auto header = RafHeader::read(reader)) {
            addCandidate(candidates, reader, header->jpeg);
        }
        return candidates;
    case FileKind::X3f:
        if (const auto directory = X3fDirectory::read(reader)) {
            for (const auto &jpeg : directory->jpegs) {
                addCandidate(candidates, reader, jpeg);
            }
        }
        return candidates;
    case FileKind::Cr3:
        for (const auto &picture : Cr3Pictures::find(reader)) {
            addCandidate(candidates, reader, picture);
        }
        return candidates;
    case FileKind::Ciff:
    case FileKind::Other:
    case FileKind::Unknown:
        addCandidate(candidates, reader, LibRawThumbnail::find(reader.file()));
        return candidates;
    case FileKind::Jpeg:
    case FileKind::Media:
        break;
    }
    return candidates;
}
