// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"

#include <QColorSpace>
#include <QImageReader>
#include <QTest>

#include <sys/resource.h>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr long mostResident = 8192L * 1024; // the sanitizer keeps what is freed for a while
#else
constexpr long mostResident = 1536L * 1024; // KiB, with everything that the test itself holds
#endif

long peakResident()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void addFiles(const std::filesystem::path &folder)
{
    QTest::addColumn<QString>("path");
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        const auto path = QString::fromStdString(entry.path().string());
        QTest::newRow(qPrintable(path.section(u'/', -1))) << path;
    }
}

double meanDifference(const QImage &one, const QImage &other)
{
    double sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            sum += std::abs(qGreen(one.pixel(x, y)) - qGreen(other.pixel(x, y)));
        }
    }
    return sum / (double(one.width()) * one.height());
}

} // namespace

/// Goes through several hundred real and damaged files.
class RealFilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_folder = qEnvironmentVariable("KESTLE_SHARED_MEDIA").toStdString();
        if (m_folder.empty() || !std::filesystem::is_directory(m_folder / "corrupt")) {
            QSKIP("the folder of real camera files is missing");
        }
    }

    void damagedFilesAreSurvived_data() { addFiles(m_folder / "corrupt"); }

    void damagedFilesAreSurvived()
    {
        QFETCH(QString, path);

        const auto source = ImageSource::open(path.toStdString());
        QVERIFY(source);
        (void)source->properties();
        for (const std::optional<int> maxPixel :
             {std::optional(1), std::optional(256), std::optional(2160), std::optional<int>()}) {
            const auto image = source->image(maxPixel);
            QVERIFY(!maxPixel || std::max(image.width(), image.height()) <= *maxPixel);
        }

        QVERIFY(peakResident() < mostResident);
    }

    void jpegPicturesLookAsAnotherDecoderShowsThem_data() { addFiles(m_folder / "photos"); }

    void jpegPicturesLookAsAnotherDecoderShowsThem()
    {
        QFETCH(QString, path);
        QImageReader reader(path);
        reader.setAutoTransform(true);
        const auto size = reader.size();
        constexpr int mostCompared = 2'000'000; // pixels; the large ones take too long here
        if (reader.format() != "jpeg" || qint64{size.width()} * size.height() > mostCompared) {
            QSKIP("no JPEG file, or a large one");
        }
        auto expected = reader.read();
        if (expected.isNull()) {
            QSKIP("the other decoder shows nothing");
        }
        if (expected.colorSpace().isValid() && expected.format() != QImage::Format_Grayscale8) {
            expected.convertToColorSpace(QColorSpace::SRgb);
        }

        static const QHash<QString, const char *> differences = {
            {u"libvips_sample-xyb.jpg"_s, "a profile with tables, which the other ignores"},
            {u"gwenview_Upper_Left.jpg"_s, "a profile with tables, which the other ignores"},
            {u"digikam_foto001bw.jpg"_s, "Adobe RGB by a tag, which the other ignores"},
            {u"ianare_portrait_5.jpg"_s, "the other loses the profile when it turns a picture"},
        };
        if (const auto *reason = differences.value(path.section(u'/', -1))) {
            QSKIP(reason);
        }

        const auto source = ImageSource::open(path.toStdString());
        const auto image = source->image(std::nullopt);

        QCOMPARE(image.size(), expected.size());
        QVERIFY(meanDifference(image, expected.convertToFormat(QImage::Format_RGB32)) < 3);
    }

private:
    std::filesystem::path m_folder;
};

QTEST_MAIN(RealFilesTest)
#include "RealFilesTest.moc"
