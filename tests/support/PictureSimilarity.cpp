// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/PictureSimilarity.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

using Sum = std::array<double, 3>;

/// Calls @p put with each place that the source place @p at has a share in, and with the share.
template<typename Put>
void share(int at, int source, int target, Put put)
{
    const double scale = double(target) / source;
    const double from = at * scale;
    const double to = (at + 1) * scale;
    for (int place = static_cast<int>(from); place < std::min<double>(to, target); ++place) {
        const double part = std::min<double>(to, place + 1) - std::max<double>(from, place);
        if (part > 0) {
            put(static_cast<size_t>(place), part);
        }
    }
}

} // namespace

QImage PictureSimilarity::averaged(const QImage &image, QSize size)
{
    const auto width = static_cast<size_t>(size.width());
    std::vector<Sum> sums(width * static_cast<size_t>(size.height()));
    std::vector<Sum> line(width);
    for (int y = 0; y < image.height(); ++y) {
        std::ranges::fill(line, Sum{});
        const auto *pixels = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            share(x, image.width(), size.width(), [&](size_t place, double part) {
                line[place][0] += part * qRed(pixels[x]);
                line[place][1] += part * qGreen(pixels[x]);
                line[place][2] += part * qBlue(pixels[x]);
            });
        }
        share(y, image.height(), size.height(), [&](size_t place, double part) {
            for (size_t x = 0; x < width; ++x) {
                for (size_t color = 0; color < 3; ++color) {
                    sums[place * width + x][color] += part * line[x][color];
                }
            }
        });
    }
    QImage result(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const auto &sum = sums[static_cast<size_t>(y) * width + static_cast<size_t>(x)];
            const auto value = [&](size_t color) {
                return static_cast<int>(std::lround(sum[color]));
            };
            result.setPixel(x, y, qRgb(value(0), value(1), value(2)));
        }
    }
    return result;
}

double PictureSimilarity::meanDifference(const QImage &one, const QImage &other)
{
    double sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const auto a = one.pixel(x, y);
            const auto b = other.pixel(x, y);
            sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
                   std::abs(qBlue(a) - qBlue(b));
        }
    }
    return sum / (3.0 * one.width() * one.height());
}

double PictureSimilarity::structure(const QImage &one, const QImage &other)
{
    constexpr int edge = 8;
    constexpr double count = edge * edge;
    constexpr double c1 = 0.01 * 255 * 0.01 * 255;
    constexpr double c2 = 0.03 * 255 * 0.03 * 255;
    double sum = 0;
    int windows = 0;
    for (int top = 0; top + edge <= one.height(); top += edge / 2) {
        for (int left = 0; left + edge <= one.width(); left += edge / 2) {
            double a = 0;
            double b = 0;
            double aa = 0;
            double bb = 0;
            double ab = 0;
            for (int y = top; y < top + edge; ++y) {
                for (int x = left; x < left + edge; ++x) {
                    const double first = qGray(one.pixel(x, y));
                    const double second = qGray(other.pixel(x, y));
                    a += first;
                    b += second;
                    aa += first * first;
                    bb += second * second;
                    ab += first * second;
                }
            }
            a /= count;
            b /= count;
            const double variance = aa / count - a * a + bb / count - b * b;
            const double covariance = ab / count - a * b;
            sum +=
                (2 * a * b + c1) * (2 * covariance + c2) / ((a * a + b * b + c1) * (variance + c2));
            ++windows;
        }
    }
    return windows > 0 ? sum / windows : 1;
}
