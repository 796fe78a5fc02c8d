// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/JpegMarkers.h"

#include <QtEndian>

#include <algorithm>

namespace {

constexpr uchar startOfImage = 0xd8;
constexpr uchar endOfImage = 0xd9;
constexpr uchar startOfScan = 0xda;
constexpr uchar app1 = 0xe1;
constexpr uchar app2 = 0xe2;
/// Far more than cameras write. A walk that is longer goes through somebody's joke.
constexpr int mostSegments = 1000;
/// Of fill bytes (B.1.1.2) and of stray ones, in all.
constexpr int mostSkippedBytes = 64 * 1024;

bool isFrame(uchar marker)
{
    const bool table = marker == 0xc4 || marker == 0xc8 || marker == 0xcc;
    return marker >= 0xc0 && marker <= 0xcf && !table;
}

/// Markers that stand alone: TEM, RST0 to RST7 and a repeated SOI.
bool standsAlone(uchar marker)
{
    return marker == 0x01 || (marker >= 0xd0 && marker <= startOfImage);
}

/// @p segment begins behind the length.
void readFrame(JpegMarkers &markers, PagedReader &reader, uchar marker, ByteRange segment)
{
    const auto data = reader.view(segment.offset, 6);
    if (segment.length < 6 || data.isEmpty()) {
        return;
    }
    markers.hasFrame = true;
    const auto height = qFromBigEndian<quint16>(data.constData() + 1);
    const auto width = qFromBigEndian<quint16>(data.constData() + 3);
    if (width > 0 && height > 0) {
        markers.width = width;
        markers.height = height;
    }
    const bool sequential = marker <= 0xc2 || marker == 0xc9 || marker == 0xca;
    markers.isPicture = sequential && data.at(0) == 8 && markers.width.has_value();
}

void readApplicationData(JpegMarkers &markers, PagedReader &reader, ByteRange segment)
{
    constexpr auto identifier = QByteArrayView("Exif\0", 5); // a sixth byte of any value pads it
    if (markers.exif || segment.length < 6 ||
        !reader.view(segment.offset, 6).startsWith(identifier)) {
        return;
    }
    markers.exif = ByteRange{segment.offset + 6, segment.length - 6};
}

bool isEnough(const JpegMarkers &markers, JpegMarkers::Until until)
{
    switch (until) {
    case JpegMarkers::Until::Scan:
        break;
    case JpegMarkers::Until::ExifAndSize:
        return markers.exif && markers.width;
    case JpegMarkers::Until::Exif:
        return markers.exif.has_value();
    }
    return false;
}

} // namespace

std::optional<JpegMarkers> JpegMarkers::read(PagedReader &reader, ByteRange range, Until until)
{
    if (range.length < 4 || reader.view(range.offset, 3) != QByteArrayView("\xff\xd8\xff", 3)) {
        return std::nullopt;
    }
    JpegMarkers markers;
    const auto end = range.offset + std::min(range.length, reader.size() - range.offset);
    auto at = range.offset + 2;
    int segments = 0;
    int skippedBytes = 0;
    while (!isEnough(markers, until) && segments < mostSegments &&
           skippedBytes < mostSkippedBytes) {
        const auto head = reader.view(at, 2);
        if (head.isEmpty() || at + 2 > end) {
            break;
        }
        const auto marker = static_cast<uchar>(head.at(1));
        // Stray bytes between segments are common, and decoders skip them too.
        if (static_cast<uchar>(head.at(0)) != 0xff || marker == 0xff) {
            ++at;
            ++skippedBytes;
            continue;
        }
        ++segments;
        at += 2;
        if (standsAlone(marker)) {
            continue;
        }
        if (marker == startOfScan || marker == endOfImage) {
            break;
        }
        const auto lengthBytes = reader.view(at, 2);
        if (lengthBytes.isEmpty()) {
            break;
        }
        const qint64 length = qFromBigEndian<quint16>(lengthBytes.constData());
        const ByteRange content = {at + 2, std::min(length - 2, end - at - 2)};
        if (isFrame(marker)) {
            readFrame(markers, reader, marker, content);
        } else if (marker == app1) {
            readApplicationData(markers, reader, content);
        } else if (marker == app2) {
            markers.applicationData2.append(content);
        }
        at += std::max<qint64>(length, 2);
    }
    return markers;
}
