// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/Resampler.h"

#include <QTest>

#include <cmath>

namespace {

QImage resampled(const QImage &source, QSize target)
{
    UprightPicture picture(target, 1);
    Resampler resampler(source.size(), target, picture);
    for (int row = 0; row < source.height(); ++row) {
        resampler.addRow(reinterpret_cast<const QRgb *>(source.constScanLine(row)));
    }
    return picture.take();
}

/// A wave of @p period pixels to the right.
QImage wave(QSize size, double period)
{
    QImage image(size, QImage::Format_RGB32);
    for (int x = 0; x < size.width(); ++x) {
        const int value =
            static_cast<int>(std::lround(128 + 100 * std::sin(x * 6.2831853 / period)));
        for (int y = 0; y < size.height(); ++y) {
            image.setPixel(x, y, qRgb(value, value, value));
        }
    }
    return image;
}

int contrast(const QImage &image)
{
    int least = 255;
    int most = 0;
    for (int x = 8; x < image.width() - 8; ++x) {
        const int value = qGreen(image.pixel(x, image.height() / 2));
        least = std::min(least, value);
        most = std::max(most, value);
    }
    return most - least;
}

} // namespace

class ResamplerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anEvenAreaStaysEven_data()
    {
        QTest::addColumn<QSize>("source");
        QTest::addColumn<QSize>("target");
        QTest::newRow("a little") << QSize(300, 200) << QSize(299, 199);
        QTest::newRow("much") << QSize(300, 200) << QSize(3, 2);
        QTest::newRow("to one pixel") << QSize(300, 200) << QSize(1, 1);
        QTest::newRow("one edge only") << QSize(300, 7) << QSize(100, 7);
        QTest::newRow("a line") << QSize(1000, 1) << QSize(10, 1);
        QTest::newRow("not at all") << QSize(31, 17) << QSize(31, 17);
    }

    void anEvenAreaStaysEven()
    {
        QFETCH(QSize, source);
        QFETCH(QSize, target);
        QImage image(source, QImage::Format_RGB32);
        image.fill(qRgb(10, 128, 250));

        QImage expected(target, QImage::Format_RGB32);
        expected.fill(qRgb(10, 128, 250));
        QCOMPARE(resampled(image, target), expected);
    }

    void theSameSizeIsTheSamePicture()
    {
        const auto image = wave({64, 32}, 9);

        QCOMPARE(resampled(image, image.size()), image);
    }

    void whatFitsTheNewSizeKeepsItsContrast()
    {
        QVERIFY(contrast(resampled(wave({600, 30}, 9), {300, 15})) > 180);
    }

    void whatIsTooFineForTheNewSizeVanishes()
    {
        QVERIFY(contrast(resampled(wave({600, 30}, 2.2), {200, 10})) < 8);
    }

    void hardEdgesDoNotOverflow()
    {
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(Qt::black);
        for (int y = 0; y < 64; ++y) {
            for (int x = 32; x < 64; ++x) {
                image.setPixel(x, y, qRgb(255, 255, 255));
            }
        }

        const auto small = resampled(image, {20, 20});

        for (int x = 0; x < 20; ++x) {
            const int value = qRed(small.pixel(x, 10));
            QVERIFY(x < 9 ? value < 40 : x > 10 ? value > 215 : true);
        }
    }
};

QTEST_GUILESS_MAIN(ResamplerTest)
#include "ResamplerTest.moc"
