// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/BoxBytes.h"
#include "tests/support/HeifPictures.h"
#include "tests/support/PictureBytes.h"

#include <QColorSpace>
#include <QTemporaryDir>
#include <QTest>

using namespace HeifBytes;
using namespace HeifPictures;
using BoxBytes::mirrorProperty;
using BoxBytes::sizeProperty;
using BoxBytes::turnProperty;
using PictureBytes::corners;
using PictureBytes::exifBlock;
using PictureBytes::jpeg;
using PictureBytes::shorts;

namespace {

constexpr auto whole = std::nullopt;

/// The colours in the middle of the four quarters, in reading direction.
QList<QRgb> quarters(const QImage &image)
{
    const int x = image.width() / 4;
    const int y = image.height() / 4;
    return {image.pixel(x, y), image.pixel(3 * x, y), image.pixel(x, 3 * y),
            image.pixel(3 * x, 3 * y)};
}

void compareQuarters(const QImage &image, const QList<QRgb> &expected)
{
    const auto found = quarters(image);
    for (int quarter = 0; quarter < 4; ++quarter) {
        QVERIFY2(isClose(found.at(quarter), expected.at(quarter)),
                 qPrintable(QString::number(found.at(quarter), 16)));
    }
}

} // namespace

class HeifPictureTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!canEncode()) {
            QSKIP("libheif has no HEVC encoder");
        }
    }

    void everySamplingAndDepthIsShown_data()
    {
        QTest::addColumn<QByteArray>("chroma");
        QTest::addColumn<int>("bits");
        for (const QByteArray chroma : {"420", "422", "444"}) {
            for (const int bits : {8, 10, 12}) {
                QTest::addRow("%s, %d bits", chroma.constData(), bits) << chroma << bits;
            }
        }
    }

    void everySamplingAndDepthIsShown()
    {
        QFETCH(QByteArray, chroma);
        QFETCH(int, bits);
        const auto file =
            HeifBytes::file(main, {coded(main, corners({128, 64}), {}, chroma.constData(), bits)});

        const auto image = decode(file, whole);

        QCOMPARE(image.size(), QSize(128, 64));
        QCOMPARE(image.format(), QImage::Format_RGB32);
        compareQuarters(image, {red, green, blue, white});
        QCOMPARE(decode(file, 50).size(), QSize(50, 25));
        compareQuarters(decode(file, 50), {red, green, blue, white});
    }

    void monochromeIsGrey_data()
    {
        QTest::addColumn<int>("bits");
        QTest::newRow("8 bits") << 8;
        QTest::newRow("10 bits") << 10;
        QTest::newRow("12 bits") << 12;
    }

    void monochromeIsGrey()
    {
        QFETCH(int, bits);

        const auto image =
            decode(file(main, {coded(main, plain({64, 64}, grey), {}, "400", bits)}), whole);

        QVERIFY(isClose(image.pixel(30, 30), grey, 2));
    }

    void itIsTurnedAsTheItemSaysAndNotByExif_data()
    {
        QTest::addColumn<QList<QByteArray>>("steps");
        QTest::addColumn<QList<QRgb>>("shown");

        QTest::newRow("not") << QList<QByteArray>{} << QList{red, green, blue, white};
        QTest::newRow("a quarter anticlockwise")
            << QList{turnProperty(1)} << QList{green, white, red, blue};
        QTest::newRow("half") << QList{turnProperty(2)} << QList{white, blue, green, red};
        QTest::newRow("a quarter clockwise")
            << QList{turnProperty(3)} << QList{blue, red, white, green};
        QTest::newRow("left and right")
            << QList{mirrorProperty(1)} << QList{green, red, white, blue};
        QTest::newRow("top and bottom")
            << QList{mirrorProperty(0)} << QList{blue, white, red, green};
        QTest::newRow("turned, then mirrored")
            << QList{turnProperty(3), mirrorProperty(1)} << QList{red, blue, green, white};
        QTest::newRow("mirrored, then turned")
            << QList{mirrorProperty(1), turnProperty(3)} << QList{white, green, blue, red};
    }

    void itIsTurnedAsTheItemSaysAndNotByExif()
    {
        QFETCH(QList<QByteArray>, steps);
        QFETCH(QList<QRgb>, shown);
        const Item exif{.id = 2,
                        .type = "Exif",
                        .data = QByteArray(4, '\0') + exifBlock({shorts(0x0112, {6})}, {}),
                        .references = {{"cdsc", {main}}}};
        const auto file = HeifBytes::file(main, {coded(main, corners({128, 64}), steps), exif});

        const auto source = write(file);
        const auto image = source.image(whole);

        compareQuarters(image, shown);
        QCOMPARE(image.height() > image.width(),
                 steps.contains(turnProperty(1)) || steps.contains(turnProperty(3)));
        compareQuarters(source.image(40), shown);
    }

    void itIsCroppedBeforeItIsTurned()
    {
        // The red and the blue quarter are left.
        const auto file = HeifBytes::file(
            main,
            {coded(main, corners({128, 64}), {cropProperty({64, 64}, {-64, 0}), turnProperty(1)})});

        const auto image = decode(file, whole);

        QCOMPARE(image.size(), QSize(64, 64));
        compareQuarters(image, {red, blue, red, blue});
        QCOMPARE(decode(file, 32).size(), QSize(32, 32));
    }

    void whatTheCodecFilledUpIsNotShown()
    {
        auto item = coded(main, plain({128, 64}, red));
        item.properties[0] = sizeProperty({120, 60});

        QCOMPARE(decode(file(main, {item}), whole).size(), QSize(120, 60));
    }

    void tilesStandInReadingDirection()
    {
        const auto items = tiled(2, {red, green, blue, white}, {64, 64}, {120, 110});

        const auto image = decode(file(main, items), whole);

        QCOMPARE(image.size(), QSize(120, 110));
        compareQuarters(image, {red, green, blue, white});
        QVERIFY(isClose(image.pixel(63, 63), red));
        QVERIFY(isClose(image.pixel(64, 64), white));
        QCOMPARE(decode(file(main, items), 60).size(), QSize(60, 55));
        compareQuarters(decode(file(main, items), 60), {red, green, blue, white});
    }

    void aTileThatIsMissingIsGrey()
    {
        auto items = tiled(2, {red, green, blue, white}, {64, 64}, {128, 128});
        items[2].data.clear();

        compareQuarters(decode(file(main, items), whole), {red, grey, blue, white});
    }

    void tilesThatAreMissingAltogetherAreNoPicture()
    {
        auto items = tiled(2, {red, green}, {64, 64}, {128, 64});
        items[1].data.clear();
        items[2].data.clear();

        QVERIFY(decode(file(main, items), whole).isNull());
    }

    void tilesThatDoNotFillThePictureAreNoPicture_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("too wide") << QSize(129, 64);
        QTest::newRow("too high") << QSize(128, 65);
        QTest::newRow("a column too many") << QSize(64, 64);
    }

    void tilesThatDoNotFillThePictureAreNoPicture()
    {
        QFETCH(QSize, size);

        QVERIFY(decode(file(main, tiled(2, {red, green}, {64, 64}, size)), whole).isNull());
    }

    void anItemMayOnlyTurnAnother()
    {
        const Item turned{.id = main,
                          .type = "iden",
                          .properties = {sizeProperty({128, 64}), turnProperty(1)},
                          .references = {{"dimg", {2}}}};
        const auto inner = coded(2, corners({128, 64}), {mirrorProperty(1)});

        const auto image = decode(file(main, {turned, inner}), whole);

        QCOMPARE(image.size(), QSize(64, 128));
        compareQuarters(image, {red, blue, green, white});
    }

    void anOverlayLaysPicturesOverEachOther()
    {
        const Item overlay{.id = main,
                           .type = "iovl",
                           .properties = {sizeProperty({128, 128})},
                           .data = overlayData({128, 128}, {{-32, 0}, {64, 64}, {1000, 0}}),
                           .references = {{"dimg", {2, 3, 2}}}};

        const auto image = decode(file(main, {overlay, coded(2, plain({96, 64}, green)),
                                              coded(3, plain({96, 128}, blue), {turnProperty(1)})}),
                                  whole);

        QCOMPARE(image.size(), QSize(128, 128));
        compareQuarters(image, {green, red, red, blue});
    }

    void aJpegItemIsShown()
    {
        const Item item{.id = main,
                        .type = "jpeg",
                        .properties = {sizeProperty({128, 64}), turnProperty(1)},
                        .data = PictureBytes::withExif(jpeg(corners({128, 64})),
                                                       exifBlock({shorts(0x0112, {6})}, {}))};

        for (const std::optional<int> maxPixel : {std::optional<int>(), std::optional(64)}) {
            compareQuarters(decode(file(main, {item}), maxPixel), {green, white, red, blue});
        }
    }

    void jpegItemsMayBeTiles()
    {
        auto items = tiled(2, {red, green, blue, white}, {64, 64}, {128, 128});
        const QList<QRgb> colours = {red, green, blue, white};
        for (int tile = 0; tile < 4; ++tile) {
            items[tile + 1].type = "jpeg";
            items[tile + 1].data = jpeg(plain({64, 64}, colours.at(tile)));
        }

        compareQuarters(decode(file(main, items), whole), colours);
    }

    void theProfileOfAJpegStreamIsReplacedByTheItems_data()
    {
        QTest::addColumn<QByteArray>("own");
        QTest::addColumn<QByteArray>("said");
        QTest::addColumn<QColorSpace>("space");

        const QColorSpace adobe(QColorSpace::AdobeRgb);
        const QColorSpace displayP3(QColorSpace::DisplayP3);
        const auto saysAdobe = profileProperty(adobe.iccProfile());
        const auto saysNothing = colorProperty(2, 2, 6, true);
        QTest::newRow("none, Adobe RGB") << QByteArray() << saysAdobe << adobe;
        QTest::newRow("Display P3, Adobe RGB") << displayP3.iccProfile() << saysAdobe << adobe;
        QTest::newRow("Adobe RGB, Adobe RGB") << adobe.iccProfile() << saysAdobe << adobe;
        QTest::newRow("none, Display P3 by numbers")
            << QByteArray() << colorProperty(12, 13, 6, true) << displayP3;
        QTest::newRow("Adobe RGB, Display P3 by numbers")
            << adobe.iccProfile() << colorProperty(12, 13, 6, true) << displayP3;
        QTest::newRow("Adobe RGB, numbers that say nothing")
            << adobe.iccProfile() << saysNothing << adobe;
    }

    void theProfileOfAJpegStreamIsReplacedByTheItems()
    {
        QFETCH(QByteArray, own);
        QFETCH(QByteArray, said);
        QFETCH(QColorSpace, space);
        const auto colour = qRgb(90, 180, 60);
        auto stream = jpeg(plain({64, 64}, colour), 100);
        if (!own.isEmpty()) {
            stream =
                PictureBytes::withSegment(stream, 0xe2, QByteArray("ICC_PROFILE\0\1\1", 14) + own);
        }
        const Item item{
            .id = main, .type = "jpeg", .properties = {sizeProperty({64, 64})}, .data = stream};
        auto plainItem = item;
        plainItem.properties.append(said);
        auto inner = item;
        inner.id = 2;
        auto describedInner = plainItem;
        describedInner.id = 2;
        const Item outer{.id = main,
                         .type = "iden",
                         .properties = {sizeProperty({64, 64})},
                         .references = {{"dimg", {2}}}};
        auto describedOuter = outer;
        describedOuter.properties.append(said);
        auto grid = describedOuter;
        grid.type = "grid";
        grid.data = gridData(1, 1, {64, 64});
        auto expected = plain({1, 1}, colour);
        expected.setColorSpace(space);
        expected.convertToColorSpace(QColorSpace::SRgb);

        for (const auto &items : {QList{plainItem}, QList{outer, describedInner},
                                  QList{describedOuter, inner}, QList{grid, inner}}) {
            const auto image = decode(file(main, items), whole);
            QVERIFY2(isClose(image.pixel(30, 30), expected.pixel(0, 0), 4),
                     qPrintable(QString::number(image.pixel(30, 30), 16)));
        }
    }

    void transparencyIsOverBlack_data()
    {
        QTest::addColumn<QByteArray>("purpose");
        QTest::addColumn<bool>("premultiplied");
        QTest::addColumn<QRgb>("shown");

        const QByteArray name = "urn:mpeg:hevc:2015:auxid:1";
        QTest::newRow("transparent") << name << false << qRgb(128, 0, 0);
        QTest::newRow("by its other name")
            << QByteArray("urn:mpeg:mpegB:cicp:systems:auxiliary:alpha") << false
            << qRgb(128, 0, 0);
        QTest::newRow("multiplied already") << name << true << red;
        QTest::newRow("depth") << QByteArray("urn:mpeg:hevc:2015:auxid:2") << false << red;
        QTest::newRow("a gain map")
            << QByteArray("urn:com:apple:photo:2020:aux:hdrgainmap") << false << red;
    }

    void transparencyIsOverBlack()
    {
        QFETCH(QByteArray, purpose);
        QFETCH(bool, premultiplied);
        auto picture = coded(main, plain({64, 64}, red));
        if (premultiplied) {
            picture.references = {{"prem", {2}}};
        }
        auto alpha = coded(2, plain({64, 64}, grey), {purposeProperty(purpose)}, "400");
        alpha.references = {{"auxl", {main}}};

        const auto image = decode(file(main, {picture, alpha}), whole);

        QFETCH(QRgb, shown);
        QVERIFY(isClose(image.pixel(30, 30), shown));
    }

    void transparencyOfAnotherSizeIsStretched_data()
    {
        QTest::addColumn<QSize>("size");

        QTest::newRow("half as large") << QSize(64, 64);
        QTest::newRow("twice as large") << QSize(256, 256);
        QTest::newRow("of another shape") << QSize(192, 64);
    }

    void transparencyOfAnotherSizeIsStretched()
    {
        QFETCH(QSize, size);
        // Only the white quarter lets something be seen.
        auto mask = plain(size, qRgb(0, 0, 0));
        for (int row = size.height() / 2; row < size.height(); ++row) {
            for (int column = size.width() / 2; column < size.width(); ++column) {
                mask.setPixel(column, row, white);
            }
        }
        auto alpha = coded(2, mask, {purposeProperty("urn:mpeg:hevc:2015:auxid:1")}, "400");
        alpha.references = {{"auxl", {main}}};
        const auto black = qRgb(0, 0, 0);

        const auto image = decode(file(main, {coded(main, plain({128, 128}, red)), alpha}), whole);

        QCOMPARE(image.size(), QSize(128, 128));
        compareQuarters(image, {black, black, black, red});
        QVERIFY(isClose(image.pixel(124, 124), red));
        QVERIFY(isClose(image.pixel(124, 4), black));
    }

    void coloursBecomeSrgb_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QColorSpace>("space");

        const QColorSpace displayP3(QColorSpace::DisplayP3);
        const QColorSpace wide(QPointF(0.3127, 0.3290), {0.708, 0.292}, {0.170, 0.797},
                               {0.131, 0.046}, QColorSpace::TransferFunction::SRgb);
        const QColorSpace srgb(QColorSpace::SRgb);
        QTest::newRow("Display P3 by its profile")
            << profileProperty(displayP3.iccProfile()) << displayP3;
        QTest::newRow("Adobe RGB by its profile")
            << profileProperty(QColorSpace(QColorSpace::AdobeRgb).iccProfile())
            << QColorSpace(QColorSpace::AdobeRgb);
        QTest::newRow("Display P3 by numbers") << colorProperty(12, 13, 6, true) << displayP3;
        QTest::newRow("BT.2020") << colorProperty(9, 1, 6, true) << wide;
        QTest::newRow("linear") << colorProperty(1, 8, 6, true)
                                << QColorSpace(QColorSpace::SRgbLinear);
        QTest::newRow("sRGB") << colorProperty(1, 13, 6, true) << srgb;
        QTest::newRow("BT.709") << colorProperty(1, 1, 6, true) << srgb;
        QTest::newRow("unspecified") << colorProperty(2, 2, 6, true) << srgb;
        QTest::newRow("reserved numbers") << colorProperty(200, 200, 6, true) << srgb;
        QTest::newRow("a damaged profile") << profileProperty(QByteArray(200, '\x5a')) << srgb;
    }

    void coloursBecomeSrgb()
    {
        QFETCH(QByteArray, property);
        QFETCH(QColorSpace, space);
        const auto colour = qRgb(90, 180, 60);

        const auto image =
            decode(file(main, {coded(main, plain({64, 64}, colour), {property})}), whole);

        auto expected = plain({1, 1}, colour);
        expected.setColorSpace(space);
        expected.convertToColorSpace(QColorSpace::SRgb);
        QVERIFY2(isClose(image.pixel(30, 30), expected.pixel(0, 0), 4),
                 qPrintable(QString::number(image.pixel(30, 30), 16)));
    }

    void theMatrixAndTheRangeAreTheItems()
    {
        // Grey 100 of the full range, read as what lies between 16 and 235.
        const auto narrow = colorProperty(1, 13, 6, false);
        const auto grey100 = qRgb(100, 100, 100);
        const auto shown =
            decode(file(main, {coded(main, plain({64, 64}, grey100), {narrow})}), whole);
        QVERIFY(isClose(shown.pixel(30, 30), qRgb(98, 98, 98), 2));

        // In BT.601 it is 115 bright, 20 less blue and 54 less red (each in its own scale).
        const auto other = colorProperty(1, 13, 1, true);
        const auto green709 =
            decode(file(main, {coded(main, plain({64, 64}, qRgb(40, 160, 80)), {other})}), whole);
        QVERIFY(isClose(green709.pixel(30, 30), qRgb(31, 144, 78), 3));
    }

    void highDynamicRangeIsDrawnIn()
    {
        // 148 of 255 is the white of paper in PQ, 203 cd/m².
        const auto paper = qRgb(148, 148, 148);

        const auto image = decode(file(main, {coded(main, plain({64, 64}, paper),
                                                    {colorProperty(9, 16, 9, true)}, "444", 10)}),
                                  whole);

        QVERIFY(isClose(image.pixel(30, 30), qRgb(231, 231, 231), 2));
    }

private:
    ImageSource write(const QByteArray &bytes) const
    {
        PictureBytes::write(m_path, bytes);
        return *ImageSource::open(m_path);
    }

    QImage decode(const QByteArray &bytes, std::optional<int> maxPixel) const
    {
        return write(bytes).image(maxPixel);
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_path =
        std::filesystem::path(m_directory.path().toStdString()) / "picture.hif";
};

QTEST_MAIN(HeifPictureTest)
#include "HeifPictureTest.moc"
