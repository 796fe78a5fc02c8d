// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/Resampler.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

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

double lanczos(double x)
{
    const double angle = std::numbers::pi * x;
    return x == 0 ? 1 : 3 * std::sin(angle) * std::sin(angle / 3) / (angle * angle);
}

/// The filter as textbooks have it, for one line of values.
std::vector<double> scaledLine(const std::vector<double> &line, int target)
{
    const double scale = double(line.size()) / target;
    std::vector<double> result;
    for (int index = 0; index < target; ++index) {
        const double centre = (index + 0.5) * scale - 0.5;
        double sum = 0;
        double weights = 0;
        for (size_t at = 0; at < line.size(); ++at) {
            const double distance = (double(at) - centre) / scale;
            if (std::abs(distance) < 3) {
                sum += lanczos(distance) * line[at];
                weights += lanczos(distance);
            }
        }
        result.push_back(sum / weights);
    }
    return result;
}

/// The green channel of @p source scaled to @p target, row by row.
std::vector<std::vector<double>> scaledGreen(const QImage &source, QSize target)
{
    std::vector<std::vector<double>> rows;
    for (int y = 0; y < source.height(); ++y) {
        std::vector<double> line;
        for (int x = 0; x < source.width(); ++x) {
            line.push_back(qGreen(source.pixel(x, y)));
        }
        rows.push_back(scaledLine(line, target.width()));
    }
    std::vector<std::vector<double>> result(static_cast<size_t>(target.height()));
    for (size_t x = 0; x < static_cast<size_t>(target.width()); ++x) {
        std::vector<double> column;
        for (const auto &row : rows) {
            column.push_back(row[x]);
        }
        const auto scaled = scaledLine(column, target.height());
        for (size_t y = 0; y < scaled.size(); ++y) {
            result[y].push_back(std::clamp(scaled[y], 0.0, 255.0));
        }
    }
    return result;
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

    void anyPictureIsScaledAsTheFilterSays()
    {
        std::mt19937 random(1);
        for (int turn = 0; turn < 200; ++turn) {
            const auto upTo = [&](int most) { return 1 + static_cast<int>(random() % most); };
            const QSize size(upTo(60), upTo(60));
            const QSize target(upTo(size.width()), upTo(size.height()));
            QImage source(size, QImage::Format_RGB32);
            for (int y = 0; y < size.height(); ++y) {
                for (int x = 0; x < size.width(); ++x) {
                    source.setPixel(x, y, static_cast<QRgb>(random()) | 0xff000000U);
                }
            }

            const auto small = resampled(source, target);
            const auto expected = scaledGreen(source, target);

            for (int y = 0; y < target.height(); ++y) {
                for (int x = 0; x < target.width(); ++x) {
                    const auto wanted = expected[static_cast<size_t>(y)][static_cast<size_t>(x)];
                    QVERIFY(std::abs(qGreen(small.pixel(x, y)) - wanted) <= 0.51);
                }
            }
        }
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
