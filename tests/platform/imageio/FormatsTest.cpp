// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/BigTiffBytes.h"
#include "tests/support/BoxBytes.h"
#include "tests/support/PictureBytes.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace PictureBytes;

namespace {

QList<Field> settings(Order order = Order::Little)
{
    return {fraction(0x829a, 1, 250, order), fraction(0x829d, 28, 10, order),
            shorts(0x8827, {400}, order), text(0x9003, "2024:03:15 14:22:07"),
            text(0xa434, "XF35mmF1.4 R")};
}

/// What the settings read as.
PropertyDictionary readSettings()
{
    return {{u"ExposureTime"_s, 0.004},
            {u"FNumber"_s, 2.8},
            {u"ISOSpeedRatings"_s, QVariantList{400LL}},
            {u"DateTimeOriginal"_s, u"2024:03:15 14:22:07"_s},
            {u"LensModel"_s, u"XF35mmF1.4 R"_s}};
}

QList<Field> size(Order order = Order::Little)
{
    return {longs(0x0100, {30}, order), longs(0x0101, {20}, order), shorts(0x0112, {6}, order)};
}

QByteArray heif()
{
    return BoxBytes::heif(
        {.properties = {BoxBytes::sizeProperty({30, 20}), BoxBytes::turnProperty(3)},
         .associations = BoxBytes::associations(BoxBytes::Heif::pictureItem, {1, 2}),
         .exif = exifBlock({shorts(0x0112, {8})}, settings())});
}

QByteArray cr3()
{
    // The second block begins with the directory of EXIF itself.
    const auto exif = "II" + number(42, 2) + number(8, 4) + directory(settings(), 8, 0);
    return BoxBytes::cr3(exifBlock(size(), {}), exif);
}

} // namespace

/// One file of each format, whole, damaged and cut.
class FormatsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void settingsAndSizeAreRead_data() { addFormats(); }

    void settingsAndSizeAreRead()
    {
        QFETCH(QByteArray, file);
        const PropertyDictionary expected = {{u"PixelWidth"_s, 30LL},
                                             {u"PixelHeight"_s, 20LL},
                                             {u"Orientation"_s, 6LL},
                                             {u"{Exif}"_s, readSettings()}};

        QCOMPARE(read(file), std::optional(expected));
    }

    void everyDamagedByteIsSurvived_data() { addFormats(); }

    void everyDamagedByteIsSurvived()
    {
        QFETCH(QByteArray, file);
        constexpr qsizetype headLength = 700;
        constexpr qsizetype tailLength = 60; // where X3F has its directory

        for (qsizetype at = 0; at < file.size(); ++at) {
            if (at >= headLength && at < file.size() - tailLength) {
                continue;
            }
            for (const char value : {'\0', '\x7f', '\xff'}) {
                auto damaged = file;
                damaged[at] = value;
                verifySurvived(damaged);
            }
        }
    }

    void everyTruncationIsSurvived_data() { addFormats(); }

    void everyTruncationIsSurvived()
    {
        QFETCH(QByteArray, file);

        for (qsizetype length = 0; length < file.size(); ++length) {
            verifySurvived(file.first(length));
        }
    }

private:
    static void addFormats()
    {
        QTest::addColumn<QByteArray>("file");

        const auto block = exifBlock({shorts(0x0112, {6})}, settings());
        const auto picture = withExif(jpeg(corners({30, 20})), block);
        QTest::newRow("JPEG") << picture;
        QTest::newRow("HEIF") << heif();
        QTest::newRow("TIFF") << exifBlock(size(), settings());
        QTest::newRow("TIFF, big-endian")
            << exifBlock(size(Order::Big), settings(Order::Big), {}, Order::Big);
        QTest::newRow("BigTIFF") << BigTiffBytes::bigTiff(size(), settings());
        QTest::newRow("BigTIFF, big-endian")
            << BigTiffBytes::bigTiff(size(Order::Big), settings(Order::Big), Order::Big);
        QTest::newRow("BigTIFF, sizes of eight bytes") << BigTiffBytes::bigTiff(
            {BigTiffBytes::wide(0x0100, 30), BigTiffBytes::wide(0x0101, 20), shorts(0x0112, {6})},
            settings());
        QTest::newRow("CR3") << cr3();
        QTest::newRow("RAF") << raf(picture, {30, 20});
        QTest::newRow("X3F") << x3f(picture, {30, 20});
    }

    std::optional<PropertyDictionary> read(const QByteArray &bytes) const
    {
        write(m_path, bytes);
        const auto source = ImageSource::open(m_path);
        return source ? source->properties() : std::nullopt;
    }

    /// Neither reading ends the program nor invents anything.
    void verifySurvived(const QByteArray &bytes) const
    {
        static const QStringList names = {u"PixelWidth"_s, u"PixelHeight"_s, u"Orientation"_s,
                                          u"{Exif}"_s, u"{MakerFuji}"_s};
        const auto properties = read(bytes).value_or(PropertyDictionary());
        for (const auto &name : properties.keys()) {
            QVERIFY(names.contains(name));
        }
        const auto image = ImageSource::open(m_path)->image(16);
        QVERIFY(image.width() <= 16 && image.height() <= 16);
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_path = std::filesystem::path(m_directory.path().toStdString()) / "file";
};

QTEST_GUILESS_MAIN(FormatsTest)
#include "FormatsTest.moc"
