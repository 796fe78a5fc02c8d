// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/metadata/ExifReader.h"

#include "platform/files/CreationDate.h"
#include "tests/support/PictureBytes.h"

#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace PictureBytes;

namespace {

ImageMetadata ofExif(const PropertyDictionary &exif)
{
    return ExifReader::metadata({{u"{Exif}"_s, exif}});
}

std::optional<QDateTime> dateOf(const QString &text)
{
    return ofExif({{u"DateTimeOriginal"_s, text}}).captureDate;
}

} // namespace

class ExifReaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aVideoHasOnlyItsCreationDate_data()
    {
        QTest::addColumn<QString>("extension");
        for (const auto &extension :
             {u"MOV"_s, u"mov"_s, u"Mp4"_s, u"m4v"_s, u"avi"_s, u"MTS"_s, u"M2TS"_s, u"3gp"_s}) {
            QTest::newRow(qPrintable(extension)) << extension;
        }
    }

    void aVideoHasOnlyItsCreationDate()
    {
        QFETCH(QString, extension);
        const auto path = m_folder / ("clip." + extension.toStdString());
        const auto block = exifBlock({}, {text(0x9003, "2024:03:15 14:22:07")});
        write(path, withExif(jpeg(corners({8, 8})), block)); // no video at all

        const auto metadata = ExifReader().read(path);

        QCOMPARE(metadata, std::optional(ImageMetadata{.captureDate = creationDate(path)}));
    }

    void aVideoThatIsGoneIsAnEmptyRecord()
    {
        QCOMPARE(ExifReader().read(m_folder / "gone.mov"), std::optional(ImageMetadata()));
    }

    void aPictureThatIsGoneOrNoneHasNoMetadata()
    {
        write(m_folder / "text.jpg", "No picture.");
        write(m_folder / "empty.raf", "");

        QVERIFY(!ExifReader().read(m_folder / "gone.jpg"));
        QVERIFY(!ExifReader().read(m_folder / "text.jpg"));
        QVERIFY(!ExifReader().read(m_folder / "empty.raf"));
        QVERIFY(!ExifReader().read(m_folder));
    }

    void everyFieldComesFromTheFile()
    {
        const auto note = fujiNote({shorts(0x1401, {0x600}), signedLongs(0x100a, {40, -60})});
        const auto block =
            exifBlock({shorts(0x0112, {6})},
                      {fraction(0x829a, 1, 250), fraction(0x829d, 28, 10), shorts(0x8827, {400}),
                       text(0x9003, "2024:03:15 14:22:07"), shorts(0x9214, {10, 20, 5, 5}),
                       opaque(0x927c, note), text(0xa434, "XF35mmF1.4 R")});
        write(m_folder / "all.jpg", withExif(jpeg(corners({30, 20})), block));

        const auto metadata = ExifReader().read(m_folder / "all.jpg");

        const ImageMetadata expected = {
            .pixelWidth = 30,
            .pixelHeight = 20,
            .aperture = 2.8,
            .exposureTime = 0.004,
            .iso = 400,
            .lensModel = u"XF35mmF1.4 R"_s,
            .captureDate = QDateTime(QDate(2024, 3, 15), QTime(14, 22, 7), Qt::UTC),
            .subjectArea = QPointF(10, 20),
            .orientation = 6,
            .fuji = FujiSettings{.filmSimulation = u"Classic Chrome"_s,
                                 .whiteBalanceShift = u"R+2 B-3"_s},
        };
        QVERIFY(metadata == expected);
        QCOMPARE(metadata->exposureText(), std::optional(u"1/250s"_s));
    }

    void aPictureWithoutExifHasItsSizeAlone()
    {
        write(m_folder / "plain.jpg", jpeg(corners({30, 20})));

        QCOMPARE(ExifReader().read(m_folder / "plain.jpg"),
                 std::optional(ImageMetadata{.pixelWidth = 30, .pixelHeight = 20}));
    }

    void exifThatIsNoDictionaryCountsAsEmpty()
    {
        const auto metadata = ExifReader::metadata({{u"{Exif}"_s, 7LL}, {u"Orientation"_s, 8LL}});

        QCOMPARE(metadata, ImageMetadata{.orientation = 8});
    }

    void anEmptyListOfSpeedsLeavesIsoAbsent()
    {
        QVERIFY(!ofExif({{u"ISOSpeedRatings"_s, QVariantList()}}).iso);
    }

    void theFirstSpeedCounts()
    {
        QCOMPARE(ofExif({{u"ISOSpeedRatings"_s, QVariantList{800LL, 100LL}}}).iso,
                 std::optional<qint64>(800));
    }

    void aSubjectAreaNeedsTwoElements()
    {
        const auto area = [](const QVariantList &list) {
            return ofExif({{u"SubjectArea"_s, list}}).subjectArea;
        };

        QVERIFY(!area({5LL}));
        QCOMPARE(area({5LL, 6LL}), std::optional(QPointF(5, 6)));
        QCOMPARE(area({5LL, 6LL, 7LL, 8LL}), std::optional(QPointF(5, 6)));
    }

    void aValueOfAnotherTypeLeavesItsFieldAbsent_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");

        QTest::newRow("aperture as integer") << u"FNumber"_s << QVariant(qint64(4));
        QTest::newRow("aperture as text") << u"FNumber"_s << QVariant(u"4"_s);
        QTest::newRow("time as integer") << u"ExposureTime"_s << QVariant(qint64(1));
        QTest::newRow("speed as integer") << u"ISOSpeedRatings"_s << QVariant(qint64(100));
        QTest::newRow("speeds as doubles") << u"ISOSpeedRatings"_s << QVariant(QVariantList{100.0});
        QTest::newRow("lens as integer") << u"LensModel"_s << QVariant(qint64(35));
        QTest::newRow("date as integer") << u"DateTimeOriginal"_s << QVariant(qint64(2024));
        QTest::newRow("area with a text")
            << u"SubjectArea"_s << QVariant(QVariantList{5LL, u"6"_s});
    }

    void aValueOfAnotherTypeLeavesItsFieldAbsent()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, value);

        QCOMPARE(ofExif({{key, value}}), ImageMetadata());
    }

    void sizesAndOrientationMustBeIntegers()
    {
        QCOMPARE(
            ExifReader::metadata(
                {{u"PixelWidth"_s, 30.0}, {u"PixelHeight"_s, u"20"_s}, {u"Orientation"_s, 1.0}}),
            ImageMetadata());
    }

    void anApertureStoredAsAnIntegerIsAbsent()
    {
        const auto block = exifBlock({}, {shorts(0x829d, {4})});
        write(m_folder / "integer.jpg", withExif(jpeg(corners({8, 8})), block));

        QVERIFY(!ExifReader().read(m_folder / "integer.jpg")->aperture);
    }

    void datesAreReadAsUtc()
    {
        const QDateTime expected(QDate(2024, 3, 15), QTime(14, 22, 7), Qt::UTC);

        QCOMPARE(dateOf(u"2024:03:15 14:22:07"_s), std::optional(expected));
    }

    void aDateInAnHourThatTheLocalZoneSkipsIsRead()
    {
        const bool wasSet = qEnvironmentVariableIsSet("TZ");
        const auto zone = qgetenv("TZ");
        qputenv("TZ", "Europe/Berlin");

        const auto date = dateOf(u"2024:03:31 02:30:00"_s);

        wasSet ? qputenv("TZ", zone) : qunsetenv("TZ");
        QCOMPARE(date->time(), QTime(2, 30));
    }

    void whatIsNoDateIsAbsent_data()
    {
        QTest::addColumn<QString>("text");
        for (const auto &text :
             {u"2024-03-15 14:22:07"_s, u"0000:00:00 00:00:00"_s, u"    :  :     :  :  "_s, u""_s,
              u"2024:03:15"_s, u"2024:03:15 14:22:07 "_s, u"2024:02:30 14:22:07"_s,
              u"2024:13:01 14:22:07"_s, u"2024:03:15 25:22:07"_s, u"2024:03:15 14:60:07"_s,
              u"2024:03:15T14:22:07"_s, u"+024:03:15 14:22:07"_s, u"2024:03:15 14:22:-7"_s}) {
            QTest::newRow(qPrintable(u'"' + text + u'"')) << text;
        }
    }

    void whatIsNoDateIsAbsent()
    {
        QFETCH(QString, text);

        QVERIFY(!dateOf(text));
    }

private:
    QTemporaryDir m_directory;
    std::filesystem::path m_folder = m_directory.path().toStdString();
};

QTEST_GUILESS_MAIN(ExifReaderTest)
#include "ExifReaderTest.moc"
