// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/store/SessionSnapshot.h"
#include "tests/support/BoxBytes.h"
#include "tests/support/DngBytes.h"
#include "tests/support/HeifPictures.h"
#include "tests/support/JpegBytes.h"
#include "tests/support/PictureBytes.h"
#include "tests/support/TiffBytes.h"

#include <QColorSpace>

#include <cstdio>
#include <fstream>
#include <string>

// Makes small files of every kind and layout, from which fuzzers begin: in the folder that is
// given, a folder for each fuzzer.

using namespace HeifPictures;
using BoxBytes::mirrorProperty;
using BoxBytes::sizeProperty;
using BoxBytes::turnProperty;
using HeifBytes::Item;
using HeifBytes::Reference;
using PictureBytes::corners;

namespace {

namespace fs = std::filesystem;

class Seeds {
public:
    explicit Seeds(fs::path folder)
        : m_folder(std::move(folder))
    {
        fs::create_directories(m_folder);
    }

    [[nodiscard]] fs::path next() { return m_folder / ("own" + std::to_string(m_count++)); }

    void add(const QByteArray &bytes) { PictureBytes::write(next(), bytes); }

private:
    fs::path m_folder;
    int m_count = 0;
};

/// With a colour space of Adobe's.
QByteArray exif(const QByteArray &thumbnail = {})
{
    const auto note = PictureBytes::fujiNote(
        {PictureBytes::shorts(0x1401, {0x100}), PictureBytes::longs(0x1040, {-16}),
         PictureBytes::text(0x1002, "auto"), PictureBytes::shorts(0x100a, {3, 4})});
    return PictureBytes::exifBlock(
        {PictureBytes::shorts(0x112, {6}), PictureBytes::text(0x10f, "Camera")},
        {PictureBytes::fraction(0x829a, 1, 250), PictureBytes::fraction(0x829d, 28, 10),
         PictureBytes::shorts(0x8827, {400}), PictureBytes::text(0x9003, "2024:03:15 10:20:30"),
         PictureBytes::shorts(0x9214, {10, 20, 5}), PictureBytes::shorts(0xa001, {2}),
         PictureBytes::text(0xa434, "A lens"), PictureBytes::opaque(0x927c, note)},
        thumbnail);
}

void addJpegs(Seeds &seeds)
{
    using JpegBytes::Colors;
    using JpegBytes::Process;
    const auto image = corners({48, 40});
    for (const auto process : {Process::Baseline, Process::Extended, Process::Progressive,
                               Process::Arithmetic, Process::ProgressiveArithmetic}) {
        for (const auto colors :
             {Colors::YCbCr, Colors::Rgb, Colors::Grey, Colors::Cmyk, Colors::Ycck}) {
            seeds.add(JpegBytes::jpeg(image, {.colors = colors, .process = process}));
        }
        seeds.add(JpegBytes::jpeg(image, {.process = process, .sampling = {2, 2}}));
        seeds.add(JpegBytes::jpeg(image, {.process = process, .restartInterval = 2}));
    }
    const auto picture = PictureBytes::jpeg(corners({240, 160}));
    const auto preview = PictureBytes::jpeg(corners({60, 40}));
    seeds.add(PictureBytes::withExif(picture, exif(preview)));
    seeds.add(PictureBytes::withSegment(picture, 0xe2,
                                        QByteArray("ICC_PROFILE\0\1\1", 14) +
                                            QColorSpace(QColorSpace::AdobeRgb).iccProfile()));
    seeds.add(PictureBytes::jpeg(corners({2400, 1600}), 20));
}

void addTiffs(Seeds &seeds)
{
    const auto value = [](QPoint at, int sample) {
        return (at.x() * 37 + at.y() * 91 + sample * 53) % 256 / 255.0;
    };
    const auto add = [&](const TiffBytes::Layout &layout) {
        const auto path = seeds.next();
        if (!TiffBytes::append(path, layout, value)) {
            fs::remove(path);
        }
    };
    const QSize size(40, 30);
    for (const quint16 compression :
         {1, 2, 3, 4, 5, 7, 8, 32773, 34676, 34677, 34887, 34925, 50000}) {
        const bool isFax = compression >= 2 && compression <= 4;
        const bool isLog = compression == 34676 || compression == 34677;
        for (const auto &tile : {QSize(), QSize(16, 16)}) {
            add({.size = size,
                 .bits = static_cast<quint16>(isFax   ? 1
                                              : isLog ? 16
                                                      : 8),
                 .samples = static_cast<quint16>(isFax ? 1 : 3),
                 .photometric = static_cast<quint16>(isFax   ? 0
                                                     : isLog ? 32845
                                                             : 2),
                 .compression = compression,
                 .tile = tile,
                 .rowsPerStrip = 16});
        }
    }
    for (const quint16 bits : {1, 2, 4, 8, 16, 32, 64}) {
        const auto format = static_cast<quint16>(bits >= 16 ? 3 : 1);
        add({.size = size, .bits = bits, .sampleFormat = format});
        add({.size = size,
             .bits = bits,
             .samples = 1,
             .photometric = 1,
             .compression = 8,
             .sampleFormat = format,
             .planar = true,
             .big = true});
    }
    add({.size = size, .bits = 16});
    add({.size = size, .bits = 16, .compression = 8, .sampleFormat = 2, .planar = true});
    add({.size = size, .bits = 32, .compression = 5});
    for (const quint16 photometric : {2, 5, 6, 8, 9, 10}) {
        const auto samples = static_cast<quint16>(photometric == 5 ? 4 : 3);
        add({.size = size, .samples = samples, .photometric = photometric, .orientation = 7});
        add({.size = size,
             .samples = static_cast<quint16>(samples + 1),
             .photometric = photometric,
             .compression = 5,
             .planar = true,
             .extraSamples = {2}});
    }
    add({.size = size,
         .bits = 4,
         .samples = 1,
         .photometric = 3,
         .compression = 32773,
         .palette = QList<quint16>(48, 999)});
    add({.size = size, .profile = QColorSpace(QColorSpace::AdobeRgb).iccProfile()});
    const auto pyramid = seeds.next();
    (void)(TiffBytes::append(pyramid, {.size = {600, 400}, .compression = 8}, value) &&
           TiffBytes::append(pyramid, {.size = {300, 200}, .compression = 8, .subfile = 1}, value));
}

void addRaws(Seeds &seeds)
{
    const auto preview = PictureBytes::jpeg(corners({60, 40}), 60);
    const auto light = [](QPoint at, int color) { return (at.x() + at.y() + color) % 40 / 40.0; };
    for (const auto pattern : {DngBytes::Pattern::Bayer, DngBytes::Pattern::XTrans}) {
        seeds.add(DngBytes::dng({.size = {48, 36}, .pattern = pattern, .light = light}));
        seeds.add(DngBytes::dng({.size = {600, 30},
                                 .pattern = pattern,
                                 .orientation = 6,
                                 .light = light,
                                 .preview = preview,
                                 .saysAdobeRgb = true}));
        const auto withBitmap = DngBytes::dng(
            {.size = {48, 36}, .pattern = pattern, .light = light, .bitmap = corners({264, 20})});
        seeds.add(withBitmap);
        seeds.add(withBitmap + '\0'); // fitted to 256 pixels, see FuzzedPicture
    }
    seeds.add(PictureBytes::raf(PictureBytes::withExif(preview, exif()), {64, 48}));
    seeds.add(PictureBytes::x3f(preview, {64, 48}));
    seeds.add(PictureBytes::x3f(preview, {64, 48}, 4));
    seeds.add(BoxBytes::cr3(exif(), exif(),
                            {.thumbnail = preview, .preview = preview, .whole = preview}));
}

void addHeifs(Seeds &seeds)
{
    const auto one = [&](const QList<QByteArray> &properties, const char *chroma = "420",
                         int bits = 8) {
        return coded(main, corners({48, 40}), properties, chroma, bits);
    };
    const auto picture = one({});
    for (const auto *chroma : {"400", "420", "422", "444"}) {
        for (const int bits : {8, 10, 12}) {
            seeds.add(HeifBytes::file(main, {one({}, chroma, bits)}));
        }
    }
    seeds.add(HeifBytes::file(main, {one({turnProperty(1), mirrorProperty(1),
                                          HeifBytes::cropProperty({30, 20}, {3, -4})})}));
    seeds.add(HeifBytes::file(main, {one({HeifBytes::colorProperty(9, 16, 9, true)}, "420", 10)}));
    seeds.add(HeifBytes::file(main, {one({HeifBytes::colorProperty(9, 18, 9, false)}, "420", 10)}));
    seeds.add(HeifBytes::file(
        main,
        {one({HeifBytes::profileProperty(QColorSpace(QColorSpace::AdobeRgb).iccProfile())})}));
    seeds.add(HeifBytes::file(main, tiled(2, {red, green, blue, white}, {64, 64}, {100, 120})));

    auto thumbnail = coded(2, corners({24, 20}));
    thumbnail.references = {{"thmb", {main}}};
    auto transparency =
        coded(3, plain({48, 40}, grey),
              {HeifBytes::purposeProperty("urn:mpeg:mpegB:cicp:systems:auxiliary:alpha")}, "400");
    transparency.references = {{"auxl", {main}}};
    seeds.add(HeifBytes::file(main, {picture, thumbnail, transparency}));

    Item part{.id = 2,
              .type = "jpeg",
              .properties = {sizeProperty({60, 40})},
              .data = PictureBytes::jpeg(corners({60, 40}))};
    seeds.add(HeifBytes::file(2, {part}));
    seeds.add(HeifBytes::file(main, {{.id = main,
                                      .type = "iden",
                                      .properties = {sizeProperty({60, 40}), turnProperty(3)},
                                      .references = {{"dimg", {2}}}},
                                     part}));
    seeds.add(HeifBytes::file(main, {{.id = main,
                                      .type = "iovl",
                                      .properties = {sizeProperty({90, 70})},
                                      .data = HeifBytes::overlayData({90, 70}, {{5, 6}, {-7, 30}}),
                                      .references = {{"dimg", {2, 2}}}},
                                     part}));
    seeds.add(BoxBytes::heif({.properties = {sizeProperty({60, 40}), turnProperty(1)},
                              .associations = BoxBytes::associations(1, {1, 2}),
                              .exif = exif()}));
}

void addOthers(Seeds &snapshots, Seeds &names)
{
    const SessionSnapshot snapshot{
        .volumeUUID = QStringLiteral("1234-ABCD"),
        .inventoryHash = QString(64, u'a'),
        .rejectedIDs = {QStringLiteral("100_FUJI/DSCF0001"), QStringLiteral("100_FUJI/DSCF0002")},
        .currentIndex = 7,
        .savedAt = QDateTime({2024, 3, 15}, {10, 20, 30}, Qt::UTC)};
    snapshots.add(snapshot.toJson());
    snapshots.add(R"({"volumeUUID":"\u00e9\ud83d\ude00","inventoryHash":"","rejectedIDs":[],)"
                  R"("currentIndex":3.0e0,"savedAt":"2024-03-15T10:20:30+01:00",)"
                  R"("other":[null,true,-1,1e99,{"deeper":[{}]}]})");
    names.add("a/DSCF0001.RAF\na/DSCF0001.JPG\na/dscf0001.jpg\nb/DSCF0001.HIF\na/DSCF0001.MOV\n"
              "a/\xff.mp4\na/stra\xc3\x9f"
              "e.tif\na/e\xcc\x81.CR3\na/\xc3\xa9.JPEG\n"
              "a/\xf4\x8f\xb8\x80.AVI\na/DSCF0001.MOV#DUP1.JPG\n");
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: make-seeds FOLDER\n", stderr);
        return 2;
    }
    const fs::path folder(argv[1]);
    const auto of = [&](const char *fuzzer) { return Seeds(folder / fuzzer); };
    auto jpegs = of("Jpeg");
    auto tiffs = of("Tiff");
    auto raws = of("Raw");
    auto heifs = of("Heif");
    auto snapshots = of("Snapshot");
    auto names = of("Names");
    addJpegs(jpegs);
    addTiffs(tiffs);
    addRaws(raws);
    addHeifs(heifs);
    addOthers(snapshots, names);
    return 0;
}
