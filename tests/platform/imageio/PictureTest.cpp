// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/AccessTime.h"
#include "tests/support/PictureBytes.h"

#include <QColorSpace>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace PictureBytes;

namespace {

constexpr auto whole = std::nullopt;

bool isClose(QRgb one, QRgb other, int tolerance)
{
    return std::abs(qRed(one) - qRed(other)) <= tolerance &&
           std::abs(qGreen(one) - qGreen(other)) <= tolerance &&
           std::abs(qBlue(one) - qBlue(other)) <= tolerance;
}

/// The colours in the middle of the four quarters, in reading direction.
QList<QRgb> quarters(const QImage &image)
{
    const int x = image.width() / 4;
    const int y = image.height() / 4;
    return {image.pixel(x, y), image.pixel(3 * x, y), image.pixel(x, 3 * y),
            image.pixel(3 * x, 3 * y)};
}

QByteArray turned(const QImage &image, quint16 code)
{
    return withExif(jpeg(image), exifBlock({shorts(0x0112, {code})}, {}));
}

QImage plain(QSize size, QRgb colour)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

} // namespace

class PictureTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPictureFitsTheWantedSizeAndIsNeverEnlarged_data()
    {
        QTest::addColumn<QSize>("stored");
        QTest::addColumn<int>("maxPixel");
        QTest::addColumn<QSize>("shown");

        QTest::newRow("eighths") << QSize(2048, 1024) << 256 << QSize(256, 128);
        QTest::newRow("between the scales") << QSize(1000, 500) << 300 << QSize(300, 150);
        QTest::newRow("just below the whole") << QSize(1000, 500) << 999 << QSize(999, 500);
        QTest::newRow("the whole") << QSize(1000, 500) << 1000 << QSize(1000, 500);
        QTest::newRow("more than the whole") << QSize(100, 50) << 256 << QSize(100, 50);
        QTest::newRow("upright format") << QSize(500, 1000) << 300 << QSize(150, 300);
        QTest::newRow("a line") << QSize(2000, 1) << 100 << QSize(100, 1);
        QTest::newRow("one pixel") << QSize(640, 480) << 1 << QSize(1, 1);
    }

    void aPictureFitsTheWantedSizeAndIsNeverEnlarged()
    {
        QFETCH(QSize, stored);
        QFETCH(int, maxPixel);

        const auto image = decode(jpeg(plain(stored, qRgb(20, 200, 90))), maxPixel);

        QTEST(image.size(), "shown");
        QCOMPARE(image.format(), QImage::Format_RGB32);
        QVERIFY(isClose(image.pixel(image.width() / 2, image.height() / 2), qRgb(20, 200, 90), 3));
    }

    void everyOrientationIsShownUpright_data()
    {
        QTest::addColumn<quint16>("code");
        QTest::addColumn<int>("maxPixel");
        for (quint16 code = 1; code <= 8; ++code) {
            QTest::addRow("code %d whole", code) << code << 0;
            QTest::addRow("code %d scaled", code) << code << 100;
        }
    }

    void everyOrientationIsShownUpright()
    {
        QFETCH(quint16, code);
        QFETCH(int, maxPixel);
        // The stored quarters, named by where the code says the upright picture's corners lie:
        // stored 0 is its first row and column, EXIF 2.32, 4.6.4.
        const QList<QList<int>> storedAt = {{0, 1, 2, 3}, {1, 0, 3, 2}, {3, 2, 1, 0}, {2, 3, 0, 1},
                                            {0, 2, 1, 3}, {2, 0, 3, 1}, {3, 1, 2, 0}, {1, 3, 0, 2}};
        const QList<QRgb> colours = {qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255),
                                     qRgb(255, 255, 255)};

        const auto image = decode(turned(corners({160, 96}), code),
                                  maxPixel > 0 ? std::optional(maxPixel) : std::nullopt);

        QCOMPARE(image.height() > image.width(), code >= 5);
        const auto shown = quarters(image);
        for (int corner = 0; corner < 4; ++corner) {
            const auto expected = colours.at(storedAt.at(code - 1).at(corner));
            QVERIFY(isClose(shown.at(corner), expected, 6));
        }
    }

    void anOrientationThatDoesNotExistIsNone()
    {
        QCOMPARE(decode(turned(corners({160, 96}), 9), whole).size(), QSize(160, 96));
        QCOMPARE(decode(turned(corners({160, 96}), 0), whole).size(), QSize(160, 96));
    }

    void anotherColourSpaceBecomesSrgb()
    {
        const auto stream = withProfile(plain({32, 32}, qRgb(0, 200, 0)),
                                        QColorSpace(QColorSpace::DisplayP3).iccProfile());

        const auto image = decode(stream, whole);

        auto expected = plain({1, 1}, qRgb(0, 200, 0));
        expected.setColorSpace(QColorSpace::DisplayP3);
        expected.convertToColorSpace(QColorSpace::SRgb);
        QVERIFY(isClose(image.pixel(16, 16), expected.pixel(0, 0), 3));
        QVERIFY(!isClose(image.pixel(16, 16), qRgb(0, 200, 0), 3));
    }

    void srgbAndUntaggedStayAsTheyAre()
    {
        const auto colour = qRgb(10, 200, 60);
        const auto tagged =
            withProfile(plain({32, 32}, colour), QColorSpace(QColorSpace::SRgb).iccProfile());

        QVERIFY(isClose(decode(tagged, whole).pixel(16, 16), colour, 3));
        QVERIFY(isClose(decode(jpeg(plain({32, 32}, colour)), whole).pixel(16, 16), colour, 3));
    }

    void aDamagedProfileIsNoProfile()
    {
        auto profile = QColorSpace(QColorSpace::DisplayP3).iccProfile();
        for (qsizetype at = 128; at < profile.size(); ++at) {
            profile[at] = '\x5a';
        }

        const auto image = decode(withProfile(plain({32, 32}, qRgb(0, 200, 0)), profile), whole);

        QVERIFY(isClose(image.pixel(16, 16), qRgb(0, 200, 0), 3));
    }

    void nothingIsSaidAboutADamagedProfile()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        const auto sound = QColorSpace(QColorSpace::DisplayP3).iccProfile();
        constexpr qsizetype tagTable = 128;

        for (qsizetype at = tagTable; at < tagTable + 16; ++at) {
            auto profile = sound;
            profile[at] = '\x5a';
            QVERIFY(
                !decode(withProfile(plain({32, 32}, qRgb(0, 200, 0)), profile), whole).isNull());
        }
    }

    void greyIsShownAsGrey()
    {
        auto grey = plain({32, 32}, qRgb(90, 90, 90)).convertToFormat(QImage::Format_Grayscale8);

        QVERIFY(isClose(decode(jpeg(grey), whole).pixel(16, 16), qRgb(90, 90, 90), 2));
    }

    void aLargeEnoughThumbnailStandsForASmallPicture_data()
    {
        QTest::addColumn<QSize>("thumbnail");
        QTest::addColumn<int>("maxPixel");
        QTest::addColumn<bool>("used");

        QTest::newRow("just large enough") << QSize(256, 192) << 256 << true;
        QTest::newRow("larger") << QSize(320, 240) << 256 << true;
        QTest::newRow("a pixel off") << QSize(320, 241) << 256 << true;
        QTest::newRow("too small") << QSize(160, 120) << 256 << false;
        QTest::newRow("small, though enough") << QSize(160, 120) << 100 << false;
        QTest::newRow("another aspect ratio") << QSize(320, 214) << 256 << false;
        QTest::newRow("too small for a screen") << QSize(320, 240) << 321 << false;
    }

    void aLargeEnoughThumbnailStandsForASmallPicture()
    {
        QFETCH(QSize, thumbnail);
        QFETCH(int, maxPixel);
        QFETCH(bool, used);
        const auto block =
            exifBlock({shorts(0x0112, {6})}, {}, jpeg(plain(thumbnail, qRgb(255, 0, 0))));
        const auto stream = withExif(jpeg(plain({800, 600}, qRgb(0, 0, 255))), block);

        const auto image = decode(stream, maxPixel);

        QVERIFY(image.height() == maxPixel && image.width() < image.height());
        QVERIFY(isClose(image.pixel(20, 20), used ? qRgb(255, 0, 0) : qRgb(0, 0, 255), 4));
    }

    void aThumbnailLargerThanThePictureDoesNotStandForIt()
    {
        const auto block = exifBlock({}, {}, jpeg(plain({1600, 1200}, qRgb(255, 0, 0))));
        const auto stream = withExif(jpeg(plain({800, 600}, qRgb(0, 0, 255))), block);

        const auto image = decode(stream, 1000);

        QCOMPARE(image.size(), QSize(800, 600));
        QVERIFY(isClose(image.pixel(20, 20), qRgb(0, 0, 255), 4));
    }

    void theThumbnailNeverStandsForTheWhole()
    {
        const auto block = exifBlock({}, {}, jpeg(plain({400, 300}, qRgb(255, 0, 0))));
        const auto stream = withExif(jpeg(plain({800, 600}, qRgb(0, 0, 255))), block);

        const auto image = decode(stream, whole);

        QCOMPARE(image.size(), QSize(800, 600));
        QVERIFY(isClose(image.pixel(20, 20), qRgb(0, 0, 255), 4));
    }

    void aRafShowsItsJpegTurnedOnce()
    {
        const auto file = raf(turned(corners({160, 96}), 6), {160, 96});

        const auto image = decode(file, whole);

        QCOMPARE(image.size(), QSize(96, 160));
        QVERIFY(isClose(quarters(image).at(1), qRgb(255, 0, 0), 6));
    }

    void aSmallJpegNeverPassesForTheWholeRaf()
    {
        const auto file = raf(jpeg(corners({160, 96})), {6000, 4000});

        QVERIFY(decode(file, whole).isNull());
        QCOMPARE(decode(file, 100).size(), QSize(100, 60));
    }

    void anX3fShowsItsJpegTurnedOnce()
    {
        const auto image = decode(x3f(turned(corners({160, 96}), 6), {160, 96}), whole);

        QCOMPARE(image.size(), QSize(96, 160));
        QVERIFY(isClose(quarters(image).at(1), qRgb(255, 0, 0), 6));
        QVERIFY(decode(x3f(jpeg(corners({160, 96})), {2640, 1760}), whole).isNull());
    }

    void aJpegNeverPassesForTheWholeOfUnknownSize()
    {
        const auto picture = jpeg(corners({160, 96}));
        constexpr quint32 pictureAt = 8;
        const auto directoryAt = static_cast<quint32>(pictureAt + picture.size());
        const auto file = "II" + number(42, 2) + number(directoryAt, 4) + picture +
                          directory({longs(0x00fe, {1}), longs(0x0201, {pictureAt}),
                                     longs(0x0202, {static_cast<qint32>(picture.size())})},
                                    directoryAt, 0);

        QVERIFY(decode(file, whole).isNull());
        QCOMPARE(decode(file, 200).size(), QSize(160, 96));
    }

    void aRawFileShowsItsLargestJpeg()
    {
        const auto image = decode(rawFile(6), 2000);

        QCOMPARE(image.size(), QSize(240, 400));
        QVERIFY(isClose(quarters(image).at(1), qRgb(255, 0, 0), 6));
    }

    void aRawFileShowsASmallerJpegWhereItWillDo()
    {
        // The smaller one is blue where the larger is red.
        QVERIFY(isClose(quarters(decode(rawFile(1), 256)).at(0), qRgb(0, 0, 255), 6));
        QVERIFY(isClose(quarters(decode(rawFile(1), 301)).at(0), qRgb(255, 0, 0), 6));
    }

    void aTiffFilesThumbnailDoesNotStandForIt()
    {
        const auto block = exifBlock(
            {longs(0x0100, {400}), longs(0x0101, {300}), shorts(0x0103, {1}), shorts(0x0106, {2})},
            {}, jpeg(corners({400, 300})));

        QVERIFY(decode(block, 256).isNull());
    }

    void theContentTellsTheKindNotTheName()
    {
        QCOMPARE(decode(jpeg(corners({30, 20})), whole, "named.RAF").size(), QSize(30, 20));
        QCOMPARE(decode(raf(jpeg(corners({30, 20})), {30, 20}), whole, "named.JPG").size(),
                 QSize(30, 20));
    }

    void theAccessTimeStaysAsItIs_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("isPicture");

        QTest::newRow("JPEG") << jpeg(corners({64, 48})) << true;
        QTest::newRow("RAW with a picture") << rawFile(6) << true;
        QTest::newRow("RAW that LibRaw is asked about")
            << exifBlock({longs(0x00fe, {0}), shorts(0x0106, {32803})}, {}) << false;
    }

    void theAccessTimeStaysAsItIs()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, isPicture);
        const auto path = m_folder / "accessed";
        write(path, file);
        if (!AccessTime::changesOnReading(path)) {
            QSKIP("the file system keeps no access times");
        }
        AccessTime::makeOld(path);

        const auto source = ImageSource::open(path);
        QCOMPARE(!source->image(100).isNull(), isPicture);
        (void)source->properties();

        QVERIFY(AccessTime::isOld(path));
    }

    void aCutPictureShowsWhatThereIs()
    {
        const auto stream = jpeg(plain({400, 400}, qRgb(200, 30, 30)), 100);

        const auto image = decode(stream.first(stream.size() * 3 / 4), whole);

        QCOMPARE(image.size(), QSize(400, 400));
        QVERIFY(isClose(image.pixel(10, 10), qRgb(200, 30, 30), 4));
    }

    void everyTruncationIsSurvived()
    {
        const auto file = turned(corners({48, 32}), 6);
        for (qsizetype length = 0; length < file.size(); length += 3) {
            const auto image = decode(file.first(length), 24);
            QVERIFY(image.isNull() || image.size() == QSize(16, 24));
        }
    }

    void aPictureOfTooManyPixelsIsRefused()
    {
        auto stream = jpeg(corners({64, 64}));
        const auto frame = stream.indexOf(QByteArray("\xff\xc0", 2));
        QVERIFY(frame > 0);
        stream.replace(frame + 5, 4, QByteArray("\xff\xdc\xff\xdc", 4));

        QVERIFY(decode(stream, 256).isNull());
        QVERIFY(decode(stream, whole).isNull());
    }

    void aProgressivePictureOfEndlessScansEnds()
    {
        QCOMPARE(decode(emptyScans(12), 256).size(), QSize(256, 171));
        QVERIFY(decode(emptyScans(5000), 256).isNull());
    }

private:
    static QByteArray withProfile(const QImage &image, const QByteArray &profile)
    {
        return withSegment(jpeg(image), 0xe2, QByteArray("ICC_PROFILE\0\1\1", 14) + profile);
    }

    /// A progressive picture of 12000 x 8000 grey pixels with @p count scans that change nothing.
    static QByteArray emptyScans(int count)
    {
        const auto big = [](quint64 value, int size) { return number(value, size, Order::Big); };
        auto stream = QByteArray("\xff\xd8", 2);
        stream += "\xff\xdb" + big(67, 2) + '\0' + QByteArray(64, '\1');
        stream += "\xff\xc2" + big(11, 2) + '\x08' + big(8000, 2) + big(12000, 2) + '\1' +
                  QByteArray("\1\x11\0", 3);
        // One code of one bit: the end of the band for 16384 blocks and what 14 more bits say.
        stream += "\xff\xc4" + big(20, 2) + '\x10' + '\1' + QByteArray(15, '\0') + '\xe0';
        const auto scan =
            "\xff\xda" + big(8, 2) + QByteArray("\1\1\0\1\x3f\0", 6) + QByteArray(200, '\x7f');
        return stream + scan.repeated(count) + "\xff\xd9";
    }

    /// A RAW file like TIFF: a reduced picture in front, the sensor's directory with a larger one.
    static QByteArray rawFile(quint16 code)
    {
        const auto large = jpeg(corners({400, 240}));
        const auto small = jpeg(corners({300, 180}).mirrored(false, true));
        constexpr quint32 largeAt = 8;
        const auto smallAt = static_cast<qint32>(largeAt + large.size());
        const auto sensorAt = static_cast<quint32>(smallAt + small.size());
        const auto sensor =
            directory({longs(0x00fe, {0}), longs(0x0100, {400}), longs(0x0101, {240}),
                       shorts(0x0106, {32803}), longs(0x0201, {largeAt}),
                       longs(0x0202, {static_cast<qint32>(large.size())})},
                      sensorAt, 0);
        const auto mainAt = sensorAt + static_cast<quint32>(sensor.size());
        return "II" + number(42, 2) + number(mainAt, 4) + large + small + sensor +
               directory({longs(0x00fe, {1}), shorts(0x0112, {code}),
                          longs(0x014a, {static_cast<qint32>(sensorAt)}), longs(0x0201, {smallAt}),
                          longs(0x0202, {static_cast<qint32>(small.size())})},
                         mainAt, 0);
    }

    QImage decode(const QByteArray &bytes, std::optional<int> maxPixel,
                  const char *name = "picture.jpg") const
    {
        write(m_folder / name, bytes);
        const auto source = ImageSource::open(m_folder / name);
        return source ? source->image(maxPixel) : QImage();
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_folder = m_directory.path().toStdString();
};

QTEST_MAIN(PictureTest)
#include "PictureTest.moc"
