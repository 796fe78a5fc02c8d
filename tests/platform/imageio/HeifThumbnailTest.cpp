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
using BoxBytes::sizeProperty;
using BoxBytes::turnProperty;
using PictureBytes::jpeg;

constexpr auto whole = std::nullopt;

/// When the thumbnail in a HEIF file is shown for a small picture, and how.
class HeifThumbnailTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!canEncode()) {
            QSKIP("libheif has no HEVC encoder");
        }
    }

    void aThumbnailFilledUpToASquareIsCropped()
    {
        auto square = plain({320, 320}, red);
        for (int row = 214; row < square.height(); ++row) {
            std::fill_n(reinterpret_cast<QRgb *>(square.scanLine(row)), square.width(), green);
        }
        auto thumbnail = coded(2, square);
        thumbnail.properties[0] = sizeProperty({320, 214});
        thumbnail.references = {{"thmb", {main}}};
        const auto file = HeifBytes::file(main, {coded(main, plain({640, 428}, blue)), thumbnail});

        for (const int maxPixel : {256, 320}) {
            const auto image = decode(file, maxPixel);
            QCOMPARE(image.size(), QSize(maxPixel, qRound(maxPixel * 214 / 320.0)));
            QVERIFY(isClose(image.pixel(20, 20), red));
            QVERIFY(isClose(image.pixel(20, image.height() - 3), red));
        }
    }

    void aThumbnailOfAnotherSizeThanItSaysIsNone_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("isJpeg");

        QTest::newRow("smaller") << QSize(256, 256) << false;
        QTest::newRow("far larger") << QSize(640, 640) << false;
        QTest::newRow("a smaller JPEG stream") << QSize(256, 256) << true;
        QTest::newRow("a larger JPEG stream") << QSize(321, 256) << true;
    }

    void aThumbnailOfAnotherSizeThanItSaysIsNone()
    {
        QFETCH(QSize, size);
        QFETCH(bool, isJpeg);
        const auto picture = plain(size, red);
        auto thumbnail =
            isJpeg ? Item{.id = 2, .type = "jpeg", .data = jpeg(picture)} : coded(2, picture);
        thumbnail.properties.resize(isJpeg ? 1 : thumbnail.properties.size());
        thumbnail.properties[0] = sizeProperty({320, 256});
        thumbnail.references = {{"thmb", {main}}};

        const auto image =
            decode(file(main, {coded(main, plain({640, 512}, blue)), thumbnail}), 256);

        QCOMPARE(image.size(), QSize(256, 205));
        QVERIFY(isClose(image.pixel(20, 20), blue));
    }

    void anOpaqueThumbnailIsNotThatOfATransparentPicture_data()
    {
        QTest::addColumn<bool>("transparent");
        QTest::addColumn<bool>("premultiplied");
        QTest::addColumn<bool>("used");

        QTest::newRow("opaque") << false << false << false;
        QTest::newRow("transparent itself") << true << false << true;
        QTest::newRow("multiplied already") << false << true << true;
    }

    void anOpaqueThumbnailIsNotThatOfATransparentPicture()
    {
        QFETCH(bool, transparent);
        QFETCH(bool, premultiplied);
        QFETCH(bool, used);
        auto picture = coded(main, plain({640, 512}, blue));
        if (premultiplied) {
            picture.references = {{"prem", {3}}};
        }
        auto thumbnail = coded(2, plain({320, 256}, red));
        thumbnail.references = {{"thmb", {main}}};
        const auto purpose = purposeProperty("urn:mpeg:hevc:2015:auxid:1");
        auto alpha = coded(3, plain({640, 512}, white), {purpose}, "400");
        alpha.references = {{"auxl", {main}}};
        auto smallAlpha = coded(4, plain({320, 256}, white), {purpose}, "400");
        smallAlpha.references = {{"auxl", {2}}};
        auto items = QList{picture, thumbnail, alpha};
        if (transparent) {
            items.append(smallAlpha);
        }

        const auto image = decode(file(main, items), 256);

        QVERIFY(isClose(image.pixel(20, 20), used ? red : blue));
    }

    void aThumbnailStandsForASmallPicture_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("mainSize");
        QTest::addColumn<QList<QByteArray>>("steps");
        QTest::addColumn<int>("maxPixel");
        QTest::addColumn<bool>("used");

        const QList<QByteArray> turned = {turnProperty(1)};
        const QSize large(640, 512);
        QTest::newRow("of the same shape") << QSize(320, 256) << large << turned << 256 << true;
        QTest::newRow("of whole blocks") << large << QSize(1280, 1020) << turned << 256 << true;
        QTest::newRow("too small") << QSize(160, 128) << large << turned << 256 << false;
        QTest::newRow("small, though enough") << QSize(160, 128) << large << turned << 100 << false;
        QTest::newRow("for a screen") << QSize(320, 256) << large << turned << 321 << false;
        QTest::newRow("of another shape") << QSize(320, 240) << large << turned << 256 << false;
        QTest::newRow("not turned")
            << QSize(320, 256) << large << QList<QByteArray>{} << 256 << false;
        QTest::newRow("turned the other way")
            << QSize(320, 256) << large << QList{turnProperty(3)} << 256 << false;
    }

    void aThumbnailStandsForASmallPicture()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, mainSize);
        QFETCH(QList<QByteArray>, steps);
        QFETCH(int, maxPixel);
        QFETCH(bool, used);
        auto thumbnail = coded(2, plain(size, red), steps);
        thumbnail.references = {{"thmb", {main}}};
        const auto file = HeifBytes::file(
            main, {coded(main, plain(mainSize, blue), {turnProperty(1)}), thumbnail});

        const auto image = decode(file, maxPixel);

        QCOMPARE(image.height(), maxPixel);
        QVERIFY(isClose(image.pixel(20, 20), used ? red : blue));
        QVERIFY(isClose(decode(file, whole).pixel(20, 20), blue));
    }

    void aThumbnailHasTheColoursOfThePicture_data()
    {
        QTest::addColumn<QList<QByteArray>>("mainSays");
        QTest::addColumn<QList<QByteArray>>("thumbnailSays");
        QTest::addColumn<QColorSpace>("space");

        const QColorSpace adobe(QColorSpace::AdobeRgb);
        const QColorSpace displayP3(QColorSpace::DisplayP3);
        const QList profile = {profileProperty(adobe.iccProfile())};
        const QList numbers = {colorProperty(12, 13, 6, true)};
        const QList<QByteArray> nothing;
        QTest::newRow("by a profile") << profile << nothing << adobe;
        QTest::newRow("by numbers") << numbers << nothing << displayP3;
        QTest::newRow("beside how it is coded")
            << numbers << QList{colorProperty(2, 2, 6, true)} << displayP3;
        QTest::newRow("but not where it says others") << profile << numbers << displayP3;
    }

    void aThumbnailHasTheColoursOfThePicture()
    {
        QFETCH(QList<QByteArray>, mainSays);
        QFETCH(QList<QByteArray>, thumbnailSays);
        QFETCH(QColorSpace, space);
        const auto colour = qRgb(90, 180, 60);
        auto thumbnail = coded(2, plain({320, 256}, colour), thumbnailSays);
        thumbnail.references = {{"thmb", {main}}};

        const auto image =
            decode(file(main, {coded(main, plain({640, 512}, blue), mainSays), thumbnail}), 256);

        auto expected = plain({1, 1}, colour);
        expected.setColorSpace(space);
        expected.convertToColorSpace(QColorSpace::SRgb);
        QVERIFY2(isClose(image.pixel(30, 30), expected.pixel(0, 0), 4),
                 qPrintable(QString::number(image.pixel(30, 30), 16)));
    }

    void aThumbnailIsFoundBehindOneThatIsNamedOften()
    {
        auto tiny = coded(2, plain({64, 64}, green));
        tiny.references = {{"thmb", QList<quint16>(20, main)}};
        auto thumbnail = coded(3, plain({320, 256}, red));
        thumbnail.references = {{"thmb", {main}}};

        const auto image =
            decode(file(main, {coded(main, plain({640, 512}, blue)), tiny, thumbnail}), 256);

        QVERIFY(isClose(image.pixel(20, 20), red));
    }

    void aDamagedThumbnailIsNone()
    {
        auto thumbnail = coded(2, plain({320, 256}, red));
        thumbnail.references = {{"thmb", {main}}};
        thumbnail.data.clear();

        const auto image =
            decode(file(main, {coded(main, plain({640, 512}, blue)), thumbnail}), 256);

        QVERIFY(isClose(image.pixel(20, 20), blue));
    }

private:
    QImage decode(const QByteArray &bytes, std::optional<int> maxPixel) const
    {
        PictureBytes::write(m_path, bytes);
        return ImageSource::open(m_path)->image(maxPixel);
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_path =
        std::filesystem::path(m_directory.path().toStdString()) / "picture.hif";
};

QTEST_MAIN(HeifThumbnailTest)
#include "HeifThumbnailTest.moc"
