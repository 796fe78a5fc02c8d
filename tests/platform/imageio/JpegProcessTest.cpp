// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ImageSource.h"
#include "tests/support/JpegBytes.h"
#include "tests/support/PictureBytes.h"

#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <random>

using JpegBytes::Colors;
using JpegBytes::Process;
using JpegBytes::Shape;

namespace {

constexpr auto whole = std::nullopt;

bool isClose(QRgb one, QRgb other, int tolerance)
{
    return std::abs(qRed(one) - qRed(other)) <= tolerance &&
           std::abs(qGreen(one) - qGreen(other)) <= tolerance &&
           std::abs(qBlue(one) - qBlue(other)) <= tolerance;
}

/// The two bytes that begin the frame: the process is told by them (ITU-T T.81, B.1.1.3).
QByteArray frameMarker(Process process)
{
    switch (process) {
    case Process::Baseline:
        return "\xff\xc0";
    case Process::Extended:
        return "\xff\xc1";
    case Process::Progressive:
        return "\xff\xc2";
    case Process::Arithmetic:
        return "\xff\xc9";
    case Process::ProgressiveArithmetic:
        return "\xff\xca";
    }
    return {};
}

} // namespace

Q_DECLARE_METATYPE(JpegBytes::Shape)

/// JPEG of every process and shape.
class JpegProcessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyProcessIsShown_data()
    {
        QTest::addColumn<Shape>("shape");

        QTest::newRow("baseline") << Shape{};
        QTest::newRow("extended") << Shape{.process = Process::Extended};
        QTest::newRow("progressive") << Shape{.process = Process::Progressive};
        QTest::newRow("arithmetic") << Shape{.process = Process::Arithmetic};
        QTest::newRow("arithmetic, progressive")
            << Shape{.process = Process::ProgressiveArithmetic};
        QTest::newRow("4:2:2") << Shape{.sampling = {2, 1}};
        QTest::newRow("4:2:0") << Shape{.sampling = {2, 2}};
        QTest::newRow("4:4:0") << Shape{.sampling = {1, 2}};
        QTest::newRow("4:1:1") << Shape{.sampling = {4, 1}};
        QTest::newRow("4:2:0, progressive")
            << Shape{.process = Process::Progressive, .sampling = {2, 2}};
        QTest::newRow("restart markers") << Shape{.restartInterval = 3};
        QTest::newRow("restart markers, progressive")
            << Shape{.process = Process::Progressive, .restartInterval = 5};
        QTest::newRow("RGB") << Shape{.colors = Colors::Rgb};
        QTest::newRow("grey") << Shape{.colors = Colors::Grey};
        QTest::newRow("grey, progressive")
            << Shape{.colors = Colors::Grey, .process = Process::Progressive};
        QTest::newRow("CMYK as Adobe writes it") << Shape{.colors = Colors::Cmyk};
        QTest::newRow("CMYK") << Shape{.colors = Colors::Cmyk, .isInverted = false};
        QTest::newRow("YCCK") << Shape{.colors = Colors::Ycck};
        QTest::newRow("YCCK, progressive, 4:2:0")
            << Shape{.colors = Colors::Ycck, .process = Process::Progressive, .sampling = {2, 2}};
    }

    void everyProcessIsShown()
    {
        QFETCH(Shape, shape);
        const auto picture = PictureBytes::corners({203, 121});
        const auto stream = JpegBytes::jpeg(picture, shape);
        QVERIFY(stream.contains(frameMarker(shape.process)));

        for (const std::optional<int> maxPixel :
             {std::optional<int>(), std::optional(100), std::optional(26)}) {
            const auto image = decode(stream, maxPixel);
            QCOMPARE(image.width(), maxPixel.value_or(203));
            for (const auto &[x, y] : {std::pair(1, 1), {3, 1}, {1, 3}, {3, 3}}) {
                auto expected = picture.pixel(picture.width() * x / 4, picture.height() * y / 4);
                if (shape.colors == Colors::Grey) {
                    expected = qRgb(qGray(expected), qGray(expected), qGray(expected));
                }
                const auto shown = image.pixel(image.width() * x / 4, image.height() * y / 4);
                QVERIFY2(isClose(shown, expected, 8), qPrintable(QString::number(shown, 16)));
            }
        }
    }

    void everySizeIsShown_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<Shape>("shape");
        for (const auto &[width, height] :
             {std::pair(1, 1), {1, 100}, {100, 1}, {7, 9}, {8, 8}, {17, 33}, {255, 3}}) {
            QTest::addRow("%d x %d", width, height) << QSize(width, height) << Shape{};
            QTest::addRow("%d x %d, 4:2:0, progressive", width, height)
                << QSize(width, height)
                << Shape{.process = Process::Progressive, .sampling = {2, 2}};
            QTest::addRow("%d x %d, YCCK", width, height)
                << QSize(width, height) << Shape{.colors = Colors::Ycck};
        }
    }

    void everySizeIsShown()
    {
        QFETCH(QSize, size);
        QFETCH(Shape, shape);
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(qRgb(200, 80, 120));

        for (const int maxPixel : {1000, 5, 1}) {
            const auto image = decode(JpegBytes::jpeg(picture, shape), maxPixel);
            QCOMPARE(std::max(image.width(), image.height()),
                     std::min(maxPixel, std::max(size.width(), size.height())));
            for (const auto corner :
                 {image.pixel(0, 0), image.pixel(image.width() - 1, image.height() - 1)}) {
                QVERIFY2(isClose(corner, qRgb(200, 80, 120), 4),
                         qPrintable(QString::number(corner, 16)));
            }
        }
    }

    void whatIsNoPictureIsAbsent_data()
    {
        QTest::addColumn<int>("marker");
        QTest::addColumn<int>("precision");

        QTest::newRow("12 bits, extended") << 0xc1 << 12;
        QTest::newRow("12 bits, progressive") << 0xc2 << 12;
        QTest::newRow("lossless") << 0xc3 << 8;
        QTest::newRow("lossless, 14 bits") << 0xc3 << 14;
        QTest::newRow("hierarchical") << 0xc5 << 8;
        QTest::newRow("lossless, arithmetic") << 0xcb << 8;
    }

    void whatIsNoPictureIsAbsent()
    {
        QFETCH(int, marker);
        QFETCH(int, precision);
        auto stream = JpegBytes::jpeg(PictureBytes::corners({64, 48}), {});
        const auto frame = stream.indexOf("\xff\xc0");
        QVERIFY(frame > 0);
        QVERIFY(!decode(stream, whole).isNull());
        stream[frame + 1] = static_cast<char>(marker);
        stream[frame + 4] = static_cast<char>(precision);

        QVERIFY(decode(stream, whole).isNull());
        QVERIFY(decode(stream, 256).isNull());
    }

    void whatIsLeftOfACutPictureIsShown_data()
    {
        QTest::addColumn<Shape>("shape");
        QTest::newRow("baseline") << Shape{};
        QTest::newRow("restart markers") << Shape{.restartInterval = 4};
        QTest::newRow("arithmetic") << Shape{.process = Process::Arithmetic};
        QTest::newRow("YCCK") << Shape{.colors = Colors::Ycck};
    }

    void whatIsLeftOfACutPictureIsShown()
    {
        QFETCH(Shape, shape);
        const auto stream = JpegBytes::jpeg(noise(), shape);

        const auto image = decode(stream.first(stream.size() * 2 / 3), whole);

        QCOMPARE(image.size(), QSize(200, 200));
        QVERIFY(isClose(image.pixel(40, 40), noise().pixel(40, 40), 40));
        QVERIFY(image.pixel(190, 190) != noise().pixel(190, 190));
    }

    void aCutProgressivePictureIsWholeButCoarse()
    {
        const auto stream =
            JpegBytes::jpeg(PictureBytes::corners({200, 200}), {.process = Process::Progressive});

        const auto image = decode(stream.first(stream.size() / 2), whole);

        QCOMPARE(image.size(), QSize(200, 200));
        QVERIFY(isClose(image.pixel(150, 150), qRgb(255, 255, 255), 60));
    }

private:
    static QImage noise()
    {
        std::mt19937 dice(20240315);
        QImage image(200, 200, QImage::Format_RGB32);
        for (int y = 0; y < image.height(); y += 8) {
            for (int x = 0; x < image.width(); x += 8) {
                const auto pixel = static_cast<QRgb>(0xff000000U | dice() % 0x1000000);
                for (int at = 0; at < 64; ++at) {
                    image.setPixel(x + at % 8, y + at / 8, pixel);
                }
            }
        }
        return image;
    }

    [[nodiscard]] QImage decode(const QByteArray &bytes, std::optional<int> maxPixel) const
    {
        PictureBytes::write(m_path, bytes);
        return ImageSource::open(m_path)->image(maxPixel);
    }

    QTemporaryDir m_directory;
    std::filesystem::path m_path = std::filesystem::path(m_directory.path().toStdString()) / "jpeg";
};

QTEST_MAIN(JpegProcessTest)
#include "JpegProcessTest.moc"
