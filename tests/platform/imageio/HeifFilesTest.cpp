// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/PictureSimilarity.h"

#include <QColorSpace>
#include <QDirIterator>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Pictures are compared at this size, which forgives what decoders may do differently: how colours
/// between samples are made up, and how numbers are rounded.
constexpr QSize compared(64, 64);

/// Files that rightly have no picture.
const QHash<QString, const char *> absent = {
    {u"bep_multi-xmp.heic"_s, "has no primary item"},
    {u"exiftool_QuickTime.heic"_s, "is cut down to the first bytes of its picture"},
    {u"kimageform_brotli.heif"_s, "is not compressed by a picture codec"},
    {u"kimageform_deflate.heif"_s, "is not compressed by a picture codec"},
    {u"kimageform_uncompressed.heif"_s, "is not compressed by a picture codec"},
    {u"libheif_lightning_mini.heif"_s, "has no items, but the short form of one"},
    {u"libheif_rgb_generic_compressed_brotli.heif"_s, "is not compressed by a picture codec"},
    {u"libheif_rgb_generic_compressed_tile_deflate.heif"_s, "is not compressed by a picture codec"},
    {u"libheif_rgb_generic_compressed_zlib.heif"_s, "is not compressed by a picture codec"},
    {u"libheif_rgb_generic_compressed_zlib_tiled.heif"_s, "is not compressed by a picture codec"},
    {u"nom-exif_compatible-brands-fail.heic"_s, "is but a list of brands"},
    {u"nom-exif_compatible-brands.heic"_s, "is but a list of brands"},
};

/// Files of which the other decoder makes nothing, or something else.
const QHash<QString, const char *> different = {
    {u"bep_iphone.heic"_s, "the other refuses settings that describe two items"},
    {u"photoview_exif_subsec_timezone.heic"_s,
     "the other refuses settings that describe two items"},
    {u"goheif_park.heic"_s, "the file is cut: the other shows nothing"},
    {u"nokia_C008.heic"_s, "the other does not know items that only turn another"},
    {u"nokia_C014.heic"_s, "the other does not know items that only turn another"},
    {u"elodie_photo.heic"_s, "the other shows two rows that the size leaves out"},
    {u"pillow_hei_LA_8__29x100.heif"_s, "the other leaves transparency out"},
    {u"pillow_hei_RGBA_8__29x100.heif"_s, "the other leaves transparency out"},
    {u"pillow_hei_RGBA_8__128x128.heif"_s, "the other leaves transparency out"},
    {u"pillow_hei_RGBA_10__128x128.heif"_s, "the other leaves transparency out"},
    {u"pillow_hei_RGBA_12__128x128.heif"_s, "the other leaves transparency out"},
    {u"hdr-test-i_test_hlg.heif"_s, "the other does not draw in high dynamic range"},
    {u"hdr-test-i_test_hlg_p3.heif"_s, "the other does not draw in high dynamic range"},
    {u"hdr-test-i_test_pq_p3.heif"_s, "the other does not draw in high dynamic range"},
};

QImage reduced(const QImage &image)
{
    return PictureSimilarity::averaged(image, compared);
}

} // namespace

/// Goes through real HEIF files, most of them by cameras and phones.
class HeifFilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const auto media = qEnvironmentVariable("KESTLE_SHARED_MEDIA");
        m_folder = media + u"/heif/"_s;
        QFile oracle(media + u"/oracle.json"_s);
        if (media.isEmpty() || !QFileInfo(m_folder).isDir() || !oracle.open(QIODevice::ReadOnly)) {
            QSKIP("the folder of real camera files is missing");
        }
        const auto entries = QJsonDocument::fromJson(oracle.readAll())[u"files"_s].toArray();
        for (const auto &entry : entries) {
            m_oracle.insert(entry[u"name"_s].toString(), entry[u"heif"_s].toObject());
        }
    }

    void everyPictureIsAsItShouldBe_data() { addFiles(); }

    void everyPictureIsAsItShouldBe()
    {
        QFETCH(QString, name);

        const auto image = decode(name, std::nullopt);

        QCOMPARE(image.isNull(), absent.contains(name));
        if (image.isNull()) {
            return;
        }
        const auto said = m_oracle.value(name);
        const auto pixels = said[u"ispe"_s].toArray();
        const bool turned = said[u"irot"_s].toInt() % 180 != 0;
        if (!said.contains(u"clap"_s)) {
            const QSize stored(pixels.at(0).toInt(), pixels.at(1).toInt());
            QCOMPARE(image.size(), turned ? stored.transposed() : stored);
        }
        verifySmallPicture(name, image);
        verifyAgainstAnother(name, image);
    }

private:
    void addFiles() const
    {
        QTest::addColumn<QString>("name");
        QDirIterator files(m_folder, QDir::Files);
        while (files.hasNext()) {
            files.next();
            QTest::newRow(qPrintable(files.fileName())) << files.fileName();
        }
    }

    QImage decode(const QString &name, std::optional<int> maxPixel) const
    {
        return ImageSource::open((m_folder + name).toStdString())->image(maxPixel);
    }

    /// Which may be a thumbnail out of the file.
    void verifySmallPicture(const QString &name, const QImage &large) const
    {
        constexpr int small = 256;
        if (name == u"goheif_park.heic"_s) {
            return; // its thumbnail is sound, but the picture was cut
        }
        const auto image = decode(name, small);
        QCOMPARE(std::max(image.width(), image.height()),
                 std::min(small, std::max(large.width(), large.height())));
        verifyAlike(reduced(image), reduced(large));
    }

    static void verifyAlike(const QImage &one, const QImage &other)
    {
        const auto difference = PictureSimilarity::meanDifference(one, other);
        const auto structure = PictureSimilarity::structure(one, other);
        const auto found = u"differs by %1, structure %2"_s.arg(difference).arg(structure);
        // ImageMagick's colours are a few steps off those of all others.
        QVERIFY2(difference < 6 && structure > 0.97, qPrintable(found));
        qInfo("%s", qPrintable(found));
    }

    void verifyAgainstAnother(const QString &name, const QImage &image) const
    {
        const auto program = QStandardPaths::findExecutable(u"convert"_s);
        if (program.isEmpty()) {
            QSKIP("ImageMagick is missing");
        }
        if (const auto *reason = different.value(name)) {
            QSKIP(reason);
        }
        const auto path = m_directory.filePath(u"other.png"_s);
        QProcess other;
        other.start(program, {m_folder + name, u"-print"_s, u"%w %h"_s, u"-background"_s,
                              u"black"_s, u"-alpha"_s, u"remove"_s, u"-alpha"_s, u"off"_s,
                              u"-scale"_s, u"64x64!"_s, u"png24:"_s + path});
        constexpr int mostTime = 60'000;
        QVERIFY(other.waitForFinished(mostTime) && other.exitCode() == 0);
        QImage expected(path);
        if (expected.colorSpace().isValid()) {
            expected.convertToColorSpace(QColorSpace::SRgb);
        }

        const auto size = u"%1 %2"_s.arg(image.width()).arg(image.height());
        QCOMPARE(QString::fromLatin1(other.readAllStandardOutput()), size);
        verifyAlike(reduced(image), expected.convertToFormat(QImage::Format_RGB32));
    }

    QString m_folder;
    QHash<QString, QJsonObject> m_oracle;
    QTemporaryDir m_directory;
};

QTEST_MAIN(HeifFilesTest)
#include "HeifFilesTest.moc"
