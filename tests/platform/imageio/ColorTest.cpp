// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/BoxBytes.h"
#include "tests/support/DngBytes.h"
#include "tests/support/JpegBytes.h"
#include "tests/support/PictureBytes.h"

#include <QColorSpace>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <array>
#include <cmath>
#include <memory>

#include <lcms2.h>

using namespace Qt::StringLiterals;
using namespace PictureBytes;

namespace {

constexpr auto whole = std::nullopt;

QByteArray profileOf(QColorSpace::NamedColorSpace space)
{
    return QColorSpace(space).iccProfile();
}

QByteArray withProfile(const QByteArray &stream, const QByteArray &profile)
{
    return withSegment(stream, 0xe2, QByteArray("ICC_PROFILE\0\1\1", 14) + profile);
}

/// Seventeen steps of each channel.
QImage allColors()
{
    constexpr int steps = 17;
    QImage image(steps * steps, steps, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto value = [](int step) { return step * 255 / (steps - 1); };
            image.setPixel(x, y, qRgb(value(x % steps), value(x / steps), value(y)));
        }
    }
    return image;
}

/// @p image, of the colours of @p profile, in sRGB, by lcms2 with floating-point numbers
/// throughout.
QImage inSrgb(const QImage &image, const QByteArray &profile)
{
    const std::unique_ptr<void, decltype(&cmsCloseProfile)> source(
        cmsOpenProfileFromMem(profile.constData(), static_cast<cmsUInt32Number>(profile.size())),
        cmsCloseProfile);
    const std::unique_ptr<void, decltype(&cmsCloseProfile)> target(cmsCreate_sRGBProfile(),
                                                                   cmsCloseProfile);
    const std::unique_ptr<void, decltype(&cmsDeleteTransform)> transform(
        cmsCreateTransform(source.get(), TYPE_RGB_DBL, target.get(), TYPE_RGB_DBL,
                           INTENT_PERCEPTUAL, cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE),
        cmsDeleteTransform);
    QImage result = image;
    if (!transform) {
        return result; // a profile that nobody can follow
    }
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto pixel = image.pixel(x, y);
            const std::array<double, 3> from = {qRed(pixel) / 255.0, qGreen(pixel) / 255.0,
                                                qBlue(pixel) / 255.0};
            std::array<double, 3> to = {};
            cmsDoTransform(transform.get(), from.data(), to.data(), 1);
            const auto code = [&](size_t channel) {
                return static_cast<int>(std::lround(255 * std::clamp(to.at(channel), 0.0, 1.0)));
            };
            result.setPixel(x, y, qRgb(code(0), code(1), code(2)));
        }
    }
    return result;
}

int largestDifference(const QImage &one, const QImage &other)
{
    int largest = one.size() == other.size() ? 0 : 256;
    for (int y = 0; y < one.height() && largest < 256; ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const auto a = one.pixel(x, y);
            const auto b = other.pixel(x, y);
            largest = std::max({largest, std::abs(qRed(a) - qRed(b)),
                                std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return largest;
}

QList<Field> exifFields(quint16 colorSpace)
{
    return {shorts(0xa001, {colorSpace})};
}

/// An EXIF block with @p colorSpace and the interoperability index @p index.
QByteArray dcfBlock(quint16 colorSpace, const QByteArray &index)
{
    constexpr quint32 first = 8;
    const auto main = [](qint32 exifAt) { return directory({longs(0x8769, {exifAt})}, first, 0); };
    const auto exifAt = first + static_cast<quint32>(main(0).size());
    const auto exif = [&](qint32 indexAt) {
        return directory(exifFields(colorSpace) + QList{longs(0xa005, {indexAt})}, exifAt, 0);
    };
    const auto indexAt = exifAt + static_cast<quint32>(exif(0).size());
    return "II" + number(42, 2) + number(first, 4) + main(static_cast<qint32>(exifAt)) +
           exif(static_cast<qint32>(indexAt)) + directory({text(0x0001, index)}, indexAt, 0);
}

} // namespace

class ColorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void coloursAreThoseOfFullPrecision_data()
    {
        QTest::addColumn<QByteArray>("profile");

        QTest::newRow("Adobe RGB") << profileOf(QColorSpace::AdobeRgb);
        QTest::newRow("Display P3") << profileOf(QColorSpace::DisplayP3);
        QTest::newRow("ProPhoto RGB") << profileOf(QColorSpace::ProPhotoRgb);
    }

    void coloursAreThoseOfFullPrecision()
    {
        QFETCH(QByteArray, profile);
        const auto stream =
            JpegBytes::jpeg(allColors(), {.colors = JpegBytes::Colors::Rgb, .quality = 100});
        const auto coded = decode(stream);

        const auto shown = decode(withProfile(stream, profile));

        QVERIFY(largestDifference(shown, coded) > 20);
        const int difference = largestDifference(shown, inSrgb(coded, profile));
        QVERIFY2(difference <= 2, qPrintable(QString::number(difference)));
    }

    void coloursOfRealFilesAreThoseOfFullPrecision_data()
    {
        QTest::addColumn<QString>("path");
        const auto folder = photos();
        if (!std::filesystem::is_directory(folder)) {
            QSKIP("the folder of real camera files is missing");
        }
        for (const auto &entry : std::filesystem::directory_iterator(folder)) {
            const auto path = QString::fromStdString(entry.path().string());
            QTest::newRow(qPrintable(path.section(u'/', -1))) << path;
        }
    }

    void coloursOfRealFilesAreThoseOfFullPrecision()
    {
        QFETCH(QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        auto bytes = file.readAll();
        const auto at = bytes.indexOf("ICC_PROFILE");
        if (!bytes.startsWith("\xff\xd8") || at < 0 || bytes.mid(at + 12, 2) != "\1\1" ||
            bytes.mid(at + 14 + 16, 4) != "RGB ") {
            return; // no profile, or not for RGB, or in several parts
        }
        const auto shown = decode(bytes, 256);
        const auto length = qFromBigEndian<quint16>(bytes.constData() + at - 2);
        const auto profile = bytes.mid(at + 14, length - 16);

        const auto coded = decode(bytes.replace(at, 3, "___"), 256);

        const int difference = largestDifference(shown, inSrgb(coded, profile));
        QVERIFY2(difference <= 2, qPrintable(QString::number(difference)));
        ++m_compared;
    }

    void cleanupTestCase()
    {
        if (std::filesystem::is_directory(photos())) {
            QVERIFY(m_compared > 20);
        }
    }

    void whatTheCameraSaysWithoutAProfileCounts_data()
    {
        QTest::addColumn<QByteArray>("block");
        QTest::addColumn<bool>("isAdobeRgb");

        QTest::newRow("another space, R03") << dcfBlock(0xffff, "R03") << true;
        QTest::newRow("another space, R98") << dcfBlock(0xffff, "R98") << false;
        QTest::newRow("sRGB, R98") << dcfBlock(1, "R98") << false;
        QTest::newRow("sRGB, R03") << dcfBlock(1, "R03") << false;
        QTest::newRow("Adobe RGB by a number of its own") << dcfBlock(2, "R98") << true;
        QTest::newRow("another space, no index") << exifBlock({}, exifFields(0xffff)) << false;
        QTest::newRow("another space, index astray")
            << exifBlock({}, exifFields(0xffff) + QList{longs(0xa005, {70000})}) << false;
    }

    void whatTheCameraSaysWithoutAProfileCounts()
    {
        QFETCH(QByteArray, block);
        QFETCH(bool, isAdobeRgb);
        const auto stream =
            JpegBytes::jpeg(allColors(), {.colors = JpegBytes::Colors::Rgb, .quality = 100});
        const auto coded = decode(stream);

        const auto shown = decode(withExif(stream, block));

        const auto expected = isAdobeRgb ? inSrgb(coded, profileOf(QColorSpace::AdobeRgb)) : coded;
        QVERIFY(largestDifference(shown, expected) <= (isAdobeRgb ? 2 : 0));
    }

    void theProfileIsBelievedBeforeTheCamera()
    {
        const auto stream =
            JpegBytes::jpeg(allColors(), {.colors = JpegBytes::Colors::Rgb, .quality = 100});
        const auto srgb = withProfile(stream, profileOf(QColorSpace::SRgb));

        QCOMPARE(decode(withExif(srgb, dcfBlock(0xffff, "R03"))), decode(stream));
    }

    void aThumbnailHasItsOwnColoursOrThePictures_data()
    {
        QTest::addColumn<QByteArray>("pictures");
        QTest::addColumn<QByteArray>("thumbnails");
        QTest::addColumn<QByteArray>("expected");

        const auto wide = profileOf(QColorSpace::DisplayP3);
        const auto adobe = profileOf(QColorSpace::AdobeRgb);
        const auto srgb = profileOf(QColorSpace::SRgb);
        const QByteArray none;
        QTest::newRow("the picture's alone") << wide << none << wide;
        QTest::newRow("the same") << wide << wide << wide;
        QTest::newRow("another") << wide << adobe << adobe;
        QTest::newRow("sRGB in another") << wide << srgb << srgb;
        QTest::newRow("its own alone") << none << adobe << adobe;
        QTest::newRow("none") << none << none << srgb;
    }

    void aThumbnailHasItsOwnColoursOrThePictures()
    {
        QFETCH(QByteArray, pictures);
        QFETCH(QByteArray, thumbnails);
        QFETCH(QByteArray, expected);
        const auto stream = [](QSize size, QRgb color, const QByteArray &profile) {
            QImage image(size, QImage::Format_RGB32);
            image.fill(color);
            const auto plain = JpegBytes::jpeg(image, {.colors = JpegBytes::Colors::Rgb});
            return profile.isEmpty() ? plain : withProfile(plain, profile);
        };
        const auto color = qRgb(60, 200, 90);
        const auto file =
            withExif(stream({800, 600}, qRgb(200, 0, 0), pictures),
                     exifBlock({shorts(0x0112, {1})}, {}, stream({320, 240}, color, thumbnails)));

        const auto shown = decode(file, 256);

        const auto coded = decode(stream(shown.size(), color, {}));
        QVERIFY(largestDifference(shown, inSrgb(coded, expected)) <= 2);
    }

    void thePreviewOfARawFileHasTheFilesColours_data()
    {
        QTest::addColumn<bool>("isAdobeRgb");
        QTest::newRow("sRGB") << false;
        QTest::newRow("Adobe RGB") << true;
    }

    void thePreviewOfARawFileHasTheFilesColours()
    {
        QFETCH(bool, isAdobeRgb);
        QImage green(236, 158, QImage::Format_RGB32);
        green.fill(qRgb(60, 200, 90));
        const auto preview = JpegBytes::jpeg(green, {.colors = JpegBytes::Colors::Rgb});
        const auto file = DngBytes::dng({.light = [](QPoint, int) { return 0.1; },
                                         .preview = preview,
                                         .saysAdobeRgb = isAdobeRgb});
        const auto cr3 = BoxBytes::cr3(
            "II" + number(42, 2) + number(8, 4) +
                directory({longs(0x0100, {236}), longs(0x0101, {158})}, 8, 0),
            "II" + number(42, 2) + number(8, 4) + cr3Exif(isAdobeRgb), {.whole = preview});

        const auto coded = decode(preview);
        const auto expected = isAdobeRgb ? inSrgb(coded, profileOf(QColorSpace::AdobeRgb)) : coded;
        QVERIFY(largestDifference(decode(file), expected) <= 2);
        QVERIFY(largestDifference(decode(cr3), expected) <= 2);
        QCOMPARE(largestDifference(expected, coded) > 20, isAdobeRgb);
    }

private:
    static std::filesystem::path photos()
    {
        return std::filesystem::path(qEnvironmentVariable("KESTLE_SHARED_MEDIA").toStdString()) /
               "photos";
    }

    /// The directory of EXIF itself, and what it points to.
    static QByteArray cr3Exif(bool isAdobeRgb)
    {
        const auto exif = [&](qint32 indexAt) {
            return directory({shorts(0xa001, {isAdobeRgb ? quint16{0xffff} : quint16{1}}),
                              longs(0xa005, {indexAt})},
                             8, 0);
        };
        const auto indexAt = static_cast<quint32>(8 + exif(0).size());
        return exif(static_cast<qint32>(indexAt)) + directory({text(0x0001, "R03")}, indexAt, 0);
    }

    [[nodiscard]] QImage decode(const QByteArray &bytes, std::optional<int> maxPixel = whole) const
    {
        write(m_path, bytes);
        return ImageSource::open(m_path)->image(maxPixel);
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_path =
        std::filesystem::path(m_directory.path().toStdString()) / "picture";
    int m_compared = 0;
};

QTEST_MAIN(ColorTest)
#include "ColorTest.moc"
