// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/BoxBytes.h"
#include "tests/support/DngBytes.h"
#include "tests/support/PeakMemory.h"
#include "tests/support/PictureBytes.h"
#include "tests/support/StandardError.h"
#include "tests/support/StoredQuarters.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <cmath>
#include <random>
#include <thread>

using namespace Qt::StringLiterals;
using namespace PictureBytes;
using DngBytes::Dng;
using DngBytes::Pattern;

namespace {

constexpr auto whole = std::nullopt;

/// The code in sRGB of an amount of light that is all there is.
int code(double light)
{
    const double value =
        light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
    return static_cast<int>(std::lround(255 * value));
}

bool isClose(QRgb one, QRgb other, int tolerance)
{
    return std::abs(qRed(one) - qRed(other)) <= tolerance &&
           std::abs(qGreen(one) - qGreen(other)) <= tolerance &&
           std::abs(qBlue(one) - qBlue(other)) <= tolerance;
}

/// Red, green, blue and white quarters of a sensor, as corners() has them.
double quarters(QSize size, QPoint at, int color)
{
    const int quarter =
        (at.x() >= size.width() / 2 ? 1 : 0) + (at.y() >= size.height() / 2 ? 2 : 0);
    return quarter == 3 || quarter == color ? 1 : 0;
}

Dng cornersDng(QSize size = {240, 160})
{
    return {.size = size,
            .light = [size](QPoint at, int color) { return quarters(size, at, color); }};
}

Dng greyDng(double light)
{
    return {.light = [light](QPoint, int) { return light; }};
}

QImage plain(QSize size, QRgb colour)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

std::array<QRgb, 4> shownQuarters(const QImage &image)
{
    const int x = image.width() / 4;
    const int y = image.height() / 4;
    return {image.pixel(x, y), image.pixel(3 * x, y), image.pixel(x, 3 * y),
            image.pixel(3 * x, 3 * y)};
}

} // namespace

Q_DECLARE_METATYPE(DngBytes::Pattern)

/// RAW files whose sensor data is there.
class RawPictureTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sensorDataIsDevelopedUpright_data()
    {
        QTest::addColumn<Pattern>("pattern");
        QTest::addColumn<quint16>("code");
        QTest::addColumn<std::optional<int>>("maxPixel");
        for (quint16 orientation = 1; orientation <= 8; ++orientation) {
            QTest::addRow("Bayer, code %d", orientation)
                << Pattern::Bayer << orientation << std::optional<int>();
        }
        QTest::newRow("Bayer, half") << Pattern::Bayer << quint16{6} << std::optional(120);
        QTest::newRow("Bayer, more than half")
            << Pattern::Bayer << quint16{6} << std::optional(121);
        QTest::newRow("Bayer, small") << Pattern::Bayer << quint16{6} << std::optional(50);
        QTest::newRow("X-Trans") << Pattern::XTrans << quint16{1} << std::optional<int>();
        QTest::newRow("X-Trans, half") << Pattern::XTrans << quint16{8} << std::optional(120);
    }

    void sensorDataIsDevelopedUpright()
    {
        QFETCH(Pattern, pattern);
        QFETCH(quint16, code);
        QFETCH(std::optional<int>, maxPixel);
        const std::array<QRgb, 4> colours = {qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255),
                                             qRgb(255, 255, 255)};
        auto parts = cornersDng();
        parts.pattern = pattern;
        parts.orientation = code;

        const auto image = decode(DngBytes::dng(parts), maxPixel);

        QCOMPARE(std::max(image.width(), image.height()), maxPixel.value_or(240));
        QCOMPARE(image.format(), QImage::Format_RGB32);
        QCOMPARE(image.height() > image.width(), code >= 5);
        const auto shown = shownQuarters(image);
        for (size_t corner = 0; corner < 4; ++corner) {
            QVERIFY(isClose(shown.at(corner),
                            colours.at(storedQuarters.at(size_t(code - 1)).at(corner)), 3));
        }
    }

    void greyIsAsBrightAsItWasExposed_data()
    {
        QTest::addColumn<double>("light");
        QTest::addColumn<int>("shown");

        // Meters place middle grey at 12.7 % of what the sensor holds: ISO 12232.
        QTest::newRow("black") << 0.0 << 0;
        QTest::newRow("middle grey") << 0.127 << code(0.18);
        QTest::newRow("two stops under") << 0.127 / 4 << code(0.047);
        QTest::newRow("a stop below white") << 0.5 << code(0.6);
        QTest::newRow("just below white") << 0.95 << code(0.966);
    }

    void greyIsAsBrightAsItWasExposed()
    {
        QFETCH(double, light);
        QFETCH(int, shown);
        // A white corner, because LibRaw takes the brightest place for white if it is near.
        auto parts = greyDng(light);
        parts.light = [light](QPoint at, int) { return at.x() < 8 && at.y() < 8 ? 1.0 : light; };

        for (const std::optional<int> maxPixel : {std::optional<int>(), std::optional(100)}) {
            const auto image = decode(DngBytes::dng(parts), maxPixel);
            const auto pixel = image.pixel(image.width() / 2, image.height() / 2);
            QVERIFY2(isClose(pixel, qRgb(shown, shown, shown), 2),
                     qPrintable(QString::number(pixel, 16)));
        }
    }

    void greyUnderAnotherLightIsGrey()
    {
        auto parts = greyDng(0);
        parts.neutral = {0.5, 1, 0.625};
        parts.light = [&parts](QPoint, int color) { return 0.4 * parts.neutral.at(size_t(color)); };

        const auto pixel = decode(DngBytes::dng(parts), whole).pixel(100, 80);

        QVERIFY(isClose(pixel, qRgb(qGreen(pixel), qGreen(pixel), qGreen(pixel)), 3));
        QVERIFY(qGreen(pixel) > 100);
    }

    void thePreviewIsShownWhereItIsLargeEnough_data()
    {
        QTest::addColumn<QSize>("preview");
        QTest::addColumn<std::optional<int>>("maxPixel");
        QTest::addColumn<bool>("used");

        const auto bound = [](int pixels) { return std::optional(pixels); };
        QTest::newRow("it reaches the size") << QSize(120, 80) << bound(120) << true;
        QTest::newRow("it does not") << QSize(120, 80) << bound(121) << false;
        QTest::newRow("the whole is wanted") << QSize(120, 80) << std::optional<int>() << false;
        QTest::newRow("it is the whole") << QSize(232, 154) << std::optional<int>() << true;
        QTest::newRow("it is the whole, for more") << QSize(232, 154) << bound(2000) << true;
    }

    void thePreviewIsShownWhereItIsLargeEnough()
    {
        QFETCH(QSize, preview);
        QFETCH(std::optional<int>, maxPixel);
        QFETCH(bool, used);
        auto parts = greyDng(0.5);
        parts.preview = jpeg(plain(preview, qRgb(255, 0, 0)));

        const auto image = decode(DngBytes::dng(parts), maxPixel);

        const auto size = used ? preview : QSize(240, 160);
        const int longest = maxPixel ? std::min(*maxPixel, size.width()) : size.width();
        QCOMPARE(image.width(), longest);
        const int grey = code(0.6);
        QVERIFY(isClose(image.pixel(20, 20), used ? qRgb(255, 0, 0) : qRgb(grey, grey, grey), 4));
    }

    void everyOrientationOfAPreviewIsShownUpright_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("code");
        for (quint16 turn = 1; turn <= 8; ++turn) {
            auto parts = greyDng(0.5);
            parts.orientation = turn;
            parts.preview = jpeg(corners({236, 158}));
            QTest::addRow("DNG, code %d", turn) << DngBytes::dng(parts) << int{turn};
            parts.preview = {};
            parts.bitmap = corners({236, 158});
            QTest::addRow("DNG, plain pixels, code %d", turn) << DngBytes::dng(parts) << int{turn};
            const auto stream =
                withExif(jpeg(corners({236, 158})), exifBlock({shorts(0x0112, {turn})}, {}));
            QTest::addRow("RAF, code %d", turn) << raf(stream, {240, 160}) << int{turn};
        }
    }

    void everyOrientationOfAPreviewIsShownUpright()
    {
        QFETCH(QByteArray, file);
        QFETCH(int, code);
        const std::array<QRgb, 4> colours = {qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255),
                                             qRgb(255, 255, 255)};

        const auto image = decode(file, 100);

        QCOMPARE(std::max(image.width(), image.height()), 100);
        QCOMPARE(image.height() > image.width(), code >= 5);
        const auto shown = shownQuarters(image);
        for (size_t corner = 0; corner < 4; ++corner) {
            const auto stored = storedQuarters.at(size_t(code - 1)).at(corner);
            QVERIFY(isClose(shown.at(corner), colours.at(stored), 6));
        }
    }

    void withoutSensorDataThePreviewServesButNotForTheWhole_data()
    {
        QTest::addColumn<bool>("isBitmap");
        QTest::newRow("JPEG") << false;
        QTest::newRow("plain pixels") << true;
    }

    void withoutSensorDataThePreviewServesButNotForTheWhole()
    {
        QFETCH(bool, isBitmap);
        auto parts = cornersDng();
        parts.orientation = 6;
        const auto preview = corners({96, 64});
        if (isBitmap) {
            parts.bitmap = preview;
        } else {
            parts.preview = jpeg(preview);
        }
        auto file = DngBytes::dng(parts);
        // The sensor's strip begins far behind the end.
        const auto place = file.lastIndexOf(QByteArray("\x11\1\4\0\1\0\0\0", 8));
        QVERIFY(place > 0);
        file.replace(place + 8, 4, number(100'000'000, 4));

        const auto image = decode(file, 200);

        QCOMPARE(image.size(), QSize(64, 96));
        QVERIFY(isClose(shownQuarters(image).at(1), qRgb(255, 0, 0), 6));
        QCOMPARE(decode(file, 48).size(), QSize(32, 48));
        QVERIFY(decode(file, whole).isNull());
    }

    void aBitmapThatIsLargeEnoughIsShownInPlaceOfTheSensorData()
    {
        auto parts = greyDng(0.5);
        parts.bitmap = plain({120, 80}, qRgb(0, 0, 255));
        const auto file = DngBytes::dng(parts);

        QCOMPARE(decode(file, 100).pixel(20, 20), qRgb(0, 0, 255));
        QVERIFY(decode(file, 121).pixel(20, 20) != qRgb(0, 0, 255));
        QCOMPARE(decode(file, whole).size(), QSize(240, 160));
    }

    void aSmallFileCannotClaimALargeSensor()
    {
        auto parts = cornersDng();
        parts.preview = jpeg(plain({96, 64}, qRgb(255, 0, 0)));
        auto file = DngBytes::dng(parts);
        const auto place = file.lastIndexOf(QByteArray("\0\1\4\0\1\0\0\0\xf0\0\0\0", 12));
        QVERIFY(place > 0);
        file.replace(place + 8, 4, number(20000, 4));
        file.replace(place + 20, 4, number(9000, 4));
        QElapsedTimer timer;
        timer.start();

        QVERIFY(decode(file, whole).isNull());
        QCOMPARE(decode(file, 200).size(), QSize(96, 64));

        QVERIFY(timer.elapsed() < 2000);
    }

    void oddSizesAreDeveloped()
    {
        const auto file = DngBytes::dng(cornersDng({241, 163}));

        QCOMPARE(decode(file, whole).size(), QSize(241, 163));
        QCOMPARE(decode(file, 120).size(), QSize(120, 81));
    }

    void aCr3ShowsItsLargestJpegAndSmallerOnesInItsPlace()
    {
        const auto main =
            "II" + number(42, 2) + number(8, 4) +
            directory({longs(0x0100, {800}), longs(0x0101, {480}), shorts(0x0112, {6})}, 8, 0);
        const auto exif = "II" + number(42, 2) + number(8, 4) + directory({}, 8, 0);
        BoxBytes::Cr3Pictures pictures = {.thumbnail = jpeg(plain({160, 96}, qRgb(0, 0, 255))),
                                          .preview = jpeg(plain({400, 240}, qRgb(0, 255, 0))),
                                          .whole = jpeg(plain({800, 480}, qRgb(255, 0, 0)))};
        const auto file = BoxBytes::cr3(main, exif, pictures);

        QCOMPARE(decode(file, whole).size(), QSize(480, 800));
        QVERIFY(isClose(decode(file, whole).pixel(9, 9), qRgb(255, 0, 0), 4));
        QCOMPARE(decode(file, 300).size(), QSize(180, 300));
        QVERIFY(isClose(decode(file, 300).pixel(9, 9), qRgb(0, 255, 0), 4));

        pictures.whole = {};
        QCOMPARE(decode(BoxBytes::cr3(main, exif, pictures), 2000).size(), QSize(240, 400));
        pictures.preview = {};
        QCOMPARE(decode(BoxBytes::cr3(main, exif, pictures), 2000).size(), QSize(96, 160));
        QVERIFY(decode(BoxBytes::cr3(main, exif), 2000).isNull());
    }

    void aPlaceThatIsInNoFileHoldsNoPicture()
    {
        const auto block = "II" + number(42, 2) + number(8, 4) + directory({}, 8, 0);
        const auto file = BoxBytes::cr3(block, block,
                                        {.thumbnail = jpeg(plain({160, 96}, qRgb(0, 0, 255))),
                                         .whole = jpeg(plain({800, 480}, qRgb(255, 0, 0)))});
        const auto at = file.indexOf("co64") + 12; // behind the type, version and count
        for (const auto *place : {"8000000000000000", "7fffffffffffffff", "ffffffffffffffff"}) {
            auto damaged = file;
            damaged.replace(at, 8, QByteArray::fromHex(place));

            QCOMPARE(decode(damaged, 2000).size(), QSize(160, 96));
        }
    }

    void everyTruncationIsSurvivedInSilence()
    {
        auto parts = cornersDng({60, 40});
        parts.bitmap = corners({24, 16});
        const auto file = DngBytes::dng(parts);

        StandardError output;
        for (qsizetype length = 0; length < file.size(); length += 61) {
            verifySurvived(file.first(length));
        }
        QCOMPARE(output.text(), QByteArray());
    }

    void everyDamageIsSurvivedInSilence()
    {
        auto parts = cornersDng({60, 40});
        parts.preview = jpeg(corners({24, 16}));
        parts.bitmap = corners({24, 16});
        const auto file = DngBytes::dng(parts);
        std::mt19937 dice(20240315); // fixed, so that a failure comes again
        const auto directories = static_cast<quint32>(file.size()) - 700;

        StandardError output;
        for (int round = 0; round < 600; ++round) {
            auto damaged = file;
            const auto from = round % 4 == 0 ? 0U : directories;
            for (int flip = 0; flip <= round % 3; ++flip) {
                const auto at = from + dice() % (static_cast<quint32>(file.size()) - from);
                damaged[at] = static_cast<char>(damaged.at(at) ^ (1U << dice() % 8));
            }
            verifySurvived(damaged);
        }
        QCOMPARE(output.text(), QByteArray());
    }

    void severalThreadsDevelopAtOnce()
    {
        const auto file = DngBytes::dng(cornersDng());
        const auto expected = decode(file, 100);
        QVERIFY(!expected.isNull());

        std::array<int, 3> equal = {};
        std::vector<std::thread> threads;
        for (auto &count : equal) {
            threads.emplace_back([&] {
                for (int round = 0; round < 10; ++round) {
                    count += ImageSource::open(m_path)->image(100) == expected ? 1 : 0;
                }
            });
        }
        for (auto &thread : threads) {
            thread.join();
        }

        QCOMPARE(equal, (std::array{10, 10, 10}));
    }

private:
    [[nodiscard]] QImage decode(const QByteArray &bytes, std::optional<int> maxPixel) const
    {
        write(m_path, bytes);
        return ImageSource::open(m_path)->image(maxPixel);
    }

    void verifySurvived(const QByteArray &bytes) const
    {
        const PeakMemory memory;
        QElapsedTimer timer;
        timer.start();
        const auto image = decode(bytes, 16);
        QVERIFY(image.width() <= 16 && image.height() <= 16);
        (void)decode(bytes, whole);
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(memory.bytes() < qint64{1024} * 1024 * 1024);
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_path = std::filesystem::path(m_directory.path().toStdString()) / "raw";
};

QTEST_MAIN(RawPictureTest)
#include "RawPictureTest.moc"
