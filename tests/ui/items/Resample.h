// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>
#include <QPainter>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

/// A picture to judge sharpness by, a way to scale it that is slow and surely good, and measures.
namespace Resample {

/// Grey: fine structure of every direction and size, down to two pixels, and hard edges.
inline QImage picture(QSize size)
{
    QImage large(size * 3, QImage::Format_RGB32);
    large.fill(QColor(110, 110, 110));
    QPainter painter(&large);
    painter.setRenderHint(QPainter::Antialiasing);
    std::mt19937 random(7);
    const auto upTo = [&](int end) { return int(random() % unsigned(end)); };
    const int shapes = size.width() * size.height() / 150;
    for (int shape = 0; shape < shapes; ++shape) {
        const int shade = upTo(256);
        const QColor color(shade, shade, shade);
        const QPointF place(upTo(large.width()), upTo(large.height()));
        painter.setPen(QPen(color, 2 + upTo(8)));
        painter.setBrush(shape % 3 == 0 ? QBrush(color) : QBrush());
        painter.drawEllipse(place, 5 + upTo(60), 5 + upTo(60));
        painter.drawLine(place, place + QPointF(upTo(200) - 100, upTo(200) - 100));
    }
    painter.end();
    return large.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGB32);
}

/// Values of one row or column, or of all rows.
using Values = std::vector<double>;

/// What makes each of @p to values out of @p from.
struct Weights {
    int first;
    Values weights;
};

inline std::vector<Weights> lanczosWeights(int from, int to)
{
    constexpr double lobes = 3;
    const double step = double(from) / to;
    const double spread = std::max(1.0, step);
    std::vector<Weights> result;
    for (int index = 0; index < to; ++index) {
        const double centre = (index + 0.5) * step - 0.5;
        Weights one{.first = int(std::floor(centre - lobes * spread)), .weights = {}};
        double sum = 0;
        for (int at = one.first; at <= centre + lobes * spread; ++at) {
            const double x = std::numbers::pi * (at - centre) / spread;
            const double weight = x == 0 ? 1
                                  : std::abs(x) >= lobes * std::numbers::pi
                                      ? 0
                                      : lobes * std::sin(x) * std::sin(x / lobes) / (x * x);
            one.weights.push_back(weight);
            sum += weight;
        }
        for (double &weight : one.weights) {
            weight /= sum;
        }
        result.push_back(one);
    }
    return result;
}

/// A grey picture by the Lanczos filter of three lobes, in double precision.
inline QImage lanczos(const QImage &image, QSize size)
{
    const auto columns = lanczosWeights(image.width(), size.width());
    const auto rows = lanczosWeights(image.height(), size.height());
    std::vector<Values> narrow;
    for (int y = 0; y < image.height(); ++y) {
        const auto *pixels = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        Values row;
        for (const auto &column : columns) {
            double sum = 0;
            int at = column.first;
            for (const double weight : column.weights) {
                sum += weight * qGreen(pixels[std::clamp(at++, 0, image.width() - 1)]);
            }
            row.push_back(sum);
        }
        narrow.push_back(row);
    }
    QImage result(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        const auto &row = rows[size_t(y)];
        for (int x = 0; x < size.width(); ++x) {
            double sum = 0;
            int at = row.first;
            for (const double weight : row.weights) {
                sum += weight * narrow[size_t(std::clamp(at++, 0, image.height() - 1))][size_t(x)];
            }
            const int value = int(std::lround(std::clamp(sum, 0.0, 255.0)));
            result.setPixel(x, y, qRgb(value, value, value));
        }
    }
    return result;
}

/// The mean square of the steps between neighbours; less of it is a softer picture.
inline double gradientEnergy(const QImage &image)
{
    double sum = 0;
    for (int y = 1; y < image.height(); ++y) {
        for (int x = 1; x < image.width(); ++x) {
            const double here = qGreen(image.pixel(x, y));
            sum += std::pow(here - qGreen(image.pixel(x - 1, y)), 2) +
                   std::pow(here - qGreen(image.pixel(x, y - 1)), 2);
        }
    }
    return sum / (image.width() - 1) / (image.height() - 1);
}

/// The root of the mean square of the differences of two grey pictures of one size, in levels.
inline double difference(const QImage &one, const QImage &other)
{
    double sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            sum += std::pow(qGreen(one.pixel(x, y)) - qGreen(other.pixel(x, y)), 2);
        }
    }
    return std::sqrt(sum / one.width() / one.height());
}

} // namespace Resample
