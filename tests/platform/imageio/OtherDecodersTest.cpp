// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "platform/imageio/RawDevelopment.h"
#include "tests/support/DngBytes.h"
#include "tests/support/PictureBytes.h"

#include <QColorSpace>
#include <QImageReader>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int shownPixel = 512;
/// The measure: both pictures are reduced to this size, and the mean absolute difference of their
/// channels is taken, of 255.
constexpr QSize comparedSize(64, 64);
constexpr double mostDifference = 2;

double difference(const QImage &one, const QImage &other)
{
    const auto reduced = [](const QImage &image) {
        return image.convertToFormat(QImage::Format_RGB32)
            .scaled(comparedSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const auto a = reduced(one);
    const auto b = reduced(other);
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const auto p = a.pixel(x, y);
            const auto q = b.pixel(x, y);
            sum += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) +
                   std::abs(qBlue(p) - qBlue(q));
        }
    }
    return sum / (3.0 * a.width() * a.height());
}

QByteArray outputOf(QProcess &process)
{
    (void)process.waitForFinished(60'000);
    return process.readAllStandardOutput(); // some fail because of a tag, behind a whole picture
}

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    return outputOf(process);
}

void addFiles(const std::filesystem::path &folder)
{
    QTest::addColumn<QString>("path");
    if (!std::filesystem::is_directory(folder)) {
        QSKIP("the folder of real camera files is missing");
    }
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        const auto path = QString::fromStdString(entry.path().string());
        QTest::newRow(qPrintable(path.section(u'/', -1))) << path;
    }
}

/// The light, 16 bits a channel, of a portable pixmap.
struct Pixmap {
    QSize size;
    QByteArray samples;

    explicit Pixmap(const QByteArray &file)
    {
        const auto fields = file.left(40).simplified().split(' ');
        if (fields.size() < 4 || fields.at(0) != "P6" || fields.at(3).left(5) != "65535") {
            return;
        }
        size = {fields.at(1).toInt(), fields.at(2).toInt()};
        samples = file.right(qsizetype{6} * size.width() * size.height());
    }
};

/// What the developed picture must be of the light that LibRaw's tool gives: through 18 % for
/// 12.7 %, then sRGB's curve.
QImage toned(const Pixmap &light)
{
    QImage image(light.size, QImage::Format_RGB32);
    const auto *sample = light.samples.constData();
    const auto next = [&sample] {
        const double value = qFromBigEndian<quint16>(sample) / 65535.0;
        sample += 2;
        const double shown = 1.5 * value / (1 + 0.5 * value);
        return static_cast<int>(std::lround(
            255 * (shown <= 0.0031308 ? 12.92 * shown : 1.055 * std::pow(shown, 1 / 2.4) - 0.055)));
    };
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int red = next();
            const int green = next();
            image.setPixel(x, y, qRgb(red, green, next()));
        }
    }
    return image;
}

} // namespace

/// Compares pictures with those of other programs, file by file.
class OtherDecodersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QFile profile(file(u"srgb.icc"_s));
        QVERIFY(profile.open(QIODevice::WriteOnly));
        profile.write(QColorSpace(QColorSpace::SRgb).iccProfile());
    }

    void tiffFilesLookAsImageMagickShowsThem_data() { addFiles(m_media / "tiff"); }

    void tiffFilesLookAsImageMagickShowsThem()
    {
        static const QHash<QString, const char *> differences = {
            {u"imagers_scale.hdr.tiff"_s, "the other does not read this predictor"},
            {u"twelvemonk_group4_2687.tif"_s, "the other does not guess what 0 means"},
            {u"mei_16f2a7e9adcda96170bc1fa873e275c1.tif"_s, "the other shows no LogL"},
            {u"pillow_16bit.s.tif"_s, "the other reads signed numbers as unsigned"},
            {u"pillow_separate_planar_extra_samples.tiff"_s,
             "the other reads signed numbers as unsigned"},
        };
        verifyAsImageMagick(differences, 4000);
    }

    void jpegFilesLookAsImageMagickShowsThem_data() { addFiles(m_media / "photos"); }

    void jpegFilesLookAsImageMagickShowsThem()
    {
        static const QHash<QString, const char *> differences = {
            {u"gwenview_png-with-jpeg-extension.jpg"_s, "a PNG file, which is none of ours"},
            {u"digikam_foto001bw.jpg"_s, "Adobe RGB by a tag, which the other ignores"},
        };
        verifyAsImageMagick(differences, 1300);
    }

    void rawPreviewsAreThoseOfLibRawsTool_data()
    {
        QTest::addColumn<QString>("path");
        for (quint16 code = 1; code <= 8; ++code) {
            for (const bool isBitmap : {false, true}) {
                const auto path =
                    file(u"turned-%1-%2.dng"_s.arg(code).arg(isBitmap ? u"bitmap"_s : u"jpeg"_s));
                DngBytes::Dng parts = {.size = {640, 400},
                                       .orientation = code,
                                       .light = [](QPoint, int) { return 0.4; }};
                const auto corners = PictureBytes::corners({600, 380});
                if (isBitmap) {
                    parts.bitmap = corners;
                } else {
                    parts.preview = PictureBytes::jpeg(corners);
                }
                PictureBytes::write(path.toStdString(), DngBytes::dng(parts));
                QTest::addRow("code %d, %s", code, isBitmap ? "plain pixels" : "JPEG") << path;
            }
        }
        if (std::filesystem::is_directory(m_media / "raw")) {
            for (const auto &entry : std::filesystem::directory_iterator(m_media / "raw")) {
                const auto path = QString::fromStdString(entry.path().string());
                QTest::newRow(qPrintable(path.section(u'/', -1))) << path;
            }
        }
    }

    void rawPreviewsAreThoseOfLibRawsTool()
    {
        QFETCH(QString, path);
        requireProgram(u"simple_dcraw"_s);
        if (path.endsWith(u"exiftool_FujiFilm.raf"_s)) {
            QSKIP("its picture was cut to 8 x 8 pixels, but not the thumbnail, which the other "
                  "takes");
        }
        // It writes its output beside its input.
        const auto copy = file(u"other-"_s + path.section(u'/', -1));
        QVERIFY(QFile::copy(path, copy));
        (void)outputOf(u"simple_dcraw"_s, {u"-e"_s, copy});
        const auto expected = previewBeside(copy);
        if (expected.isNull()) {
            QSKIP("the other finds no picture");
        }

        const auto image = ImageSource::open(path.toStdString())->image(shownPixel);

        QVERIFY(!image.isNull());
        QCOMPARE(image.height() > image.width(), expected.height() > expected.width());
        QVERIFY2(difference(image, expected) < mostDifference,
                 qPrintable(QString::number(difference(image, expected))));
    }

    void sensorDataIsDevelopedAsLibRawsToolDoes_data()
    {
        QTest::addColumn<QString>("path");
        for (const auto pattern : {DngBytes::Pattern::Bayer, DngBytes::Pattern::XTrans}) {
            const bool isBayer = pattern == DngBytes::Pattern::Bayer;
            const auto path = file(isBayer ? u"bayer.dng"_s : u"xtrans.dng"_s);
            const auto light = [](QPoint at, int color) {
                const double phase = color + at.x() / 40.0 + at.y() / 60.0;
                return 0.45 + 0.45 * std::sin(phase);
            };
            PictureBytes::write(path.toStdString(),
                                DngBytes::dng({.size = {600, 560}, // the tool wants more than 512

                                               .pattern = pattern,
                                               .light = light,
                                               .neutral = {0.6, 1, 0.8}}));
            QTest::newRow(isBayer ? "Bayer" : "X-Trans") << path;
        }
        if (std::filesystem::is_directory(m_media / "raw")) {
            for (const auto &entry : std::filesystem::directory_iterator(m_media / "raw")) {
                const auto path = QString::fromStdString(entry.path().string());
                const auto name = path.section(u'/', -1);
                if (name.startsWith(u"derived_"_s)) { // the others have no sensor data
                    QTest::newRow(qPrintable(name)) << path;
                }
            }
        }
    }

    void sensorDataIsDevelopedAsLibRawsToolDoes()
    {
        QFETCH(QString, path);
        requireProgram(u"dcraw_emu"_s);
        const auto copy = file(u"developed-"_s + path.section(u'/', -1));
        QVERIFY(QFile::copy(path, copy));
        // Linear, 16 bits, balanced as the camera did, not turned, colours of sRGB.
        (void)outputOf(u"dcraw_emu"_s,
                       {u"-4"_s, u"-w"_s, u"-o"_s, u"1"_s, u"-t"_s, u"0"_s, u"-q"_s, u"2"_s, copy});
        QFile output(copy + u".ppm"_s);
        QVERIFY(output.open(QIODevice::ReadOnly));
        const Pixmap light(output.readAll());
        QVERIFY(!light.size.isEmpty());
        const auto expected = toned(light);

        const auto input = InputFile::open(path.toStdString());
        const auto lying = [](QSize, int) { return 1; };
        const auto whole = RawDevelopment::develop(*input, std::nullopt, lying);
        const auto small = RawDevelopment::develop(*input, 200, lying);

        QCOMPARE(whole.size(), light.size);
        QCOMPARE(small.width(), 200);
        QVERIFY2(difference(whole, expected) < mostDifference,
                 qPrintable(QString::number(difference(whole, expected))));
        QVERIFY2(difference(small, expected) < mostDifference,
                 qPrintable(QString::number(difference(small, expected))));
    }

private:
    /// What LibRaw's tool has written beside @p file, turned as it says: in the JPEG stream, and of
    /// plain pixels by what it finds in the file.
    static QImage previewBeside(const QString &file)
    {
        QImageReader stream(file + u".thumb.jpg"_s);
        stream.setAutoTransform(true);
        const auto image = stream.read();
        if (!image.isNull()) {
            return image;
        }
        static const QRegularExpression flips(u"^Image flip: (\\d)"_s,
                                              QRegularExpression::MultilineOption);
        const auto text = QString::fromUtf8(outputOf(u"raw-identify"_s, {u"-v"_s, file}));
        const int flip = flips.match(text).captured(1).toInt();
        // By bits: mirrored, upside down, and then the rows become columns.
        const auto pixels =
            QImage(file + u".thumb.ppm"_s).mirrored((flip & 1) != 0, (flip & 2) != 0);
        return (flip & 4) != 0 ? pixels.transformed(QTransform(0, 1, 1, 0, 0, 0)) : pixels;
    }

    static void requireProgram(const QString &name)
    {
        QVERIFY2(!QStandardPaths::findExecutable(name).isEmpty(),
                 qPrintable(name + u" is missing: see packaging/debian-packages.txt"_s));
    }

    [[nodiscard]] QString file(const QString &name) const { return m_directory.filePath(name); }

    void verifyAsImageMagick(const QHash<QString, const char *> &differences, int mostWidth) const
    {
        QFETCH(QString, path);
        requireProgram(u"convert"_s);
        if (const auto *reason = differences.value(path.section(u'/', -1))) {
            QSKIP(reason);
        }
        const auto source = ImageSource::open(path.toStdString());
        const auto width =
            integerValue(source->properties().value_or(PropertyDictionary()), u"PixelWidth"_s);
        if (width.value_or(0) > mostWidth) {
            QSKIP("it is large, and takes the other long");
        }
        QFile content(path);
        QVERIFY(content.open(QIODevice::ReadOnly));
        const auto bytes = content.readAll();
        QStringList arguments = {path + u"[0]"_s, u"-auto-orient"_s};
        if (bytes.contains("RGB XYZ ") || bytes.contains("RGB Lab ")) { // in a profile's head
            arguments += {u"-profile"_s, file(u"srgb.icc"_s)};
        } else {
            arguments += {u"+profile"_s, u"icc"_s}; // inks are shown plainly
        }
        arguments +=
            {u"-background"_s, u"black"_s,    u"-alpha"_s, u"remove"_s, u"-colorspace"_s, u"sRGB"_s,
             u"-resize"_s,     u"512x512>"_s, u"-depth"_s, u"8"_s,      u"ppm:-"_s};
        QProcess other;
        other.start(u"convert"_s, arguments);

        const auto image = source->image(shownPixel); // meanwhile

        const auto expected = QImage::fromData(outputOf(other), "PPM");
        QCOMPARE(image.isNull(), expected.isNull());
        if (image.isNull()) {
            return;
        }
        QVERIFY(std::abs(image.width() - expected.width()) <= 1 &&
                std::abs(image.height() - expected.height()) <= 1);
        QVERIFY2(difference(image, expected) < mostDifference,
                 qPrintable(QString::number(difference(image, expected))));
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_media = qEnvironmentVariable("KESTLE_SHARED_MEDIA").toStdString();
};

QTEST_MAIN(OtherDecodersTest)
#include "OtherDecodersTest.moc"
