// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/PlaneConverter.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

/// Four samples at once.
constexpr size_t lanes = 4;
using Floats = float __attribute__((vector_size(16)));
using Integers = qint32 __attribute__((vector_size(16)));

constexpr int identityMatrix = 0;

/// The shares of red and blue in brightness (H.273, table 4). Unspecified is what cameras' JPEGs
/// have: BT.601.
struct Shares {
    double red;
    double blue;
};

Shares sharesOf(int matrix)
{
    switch (matrix) {
    case 1:
        return {0.2126, 0.0722};
    case 4:
        return {0.30, 0.11};
    case 7:
        return {0.212, 0.087};
    case 9:
    case 10:
        return {0.2627, 0.0593};
    default:
        return {0.299, 0.114};
    }
}

/// How samples become numbers from 0 to 1, or from -0.5 to 0.5.
struct Scale {
    double zero;
    double range;
};

Scale brightnessScale(int bits, bool full)
{
    const double unit = 1 << (bits - 8);
    return full ? Scale{0, double((1 << bits) - 1)} : Scale{16 * unit, 219 * unit};
}

Scale colorScale(int bits, bool full)
{
    const double unit = 1 << (bits - 8);
    return {128 * unit, full ? double((1 << bits) - 1) : 224 * unit};
}

size_t padded(int width)
{
    return (static_cast<size_t>(width) + lanes - 1) / lanes * lanes;
}

using FewBytes = quint8 __attribute__((vector_size(lanes)));
using FewShorts = quint16 __attribute__((vector_size(2 * lanes)));

template<typename Sample, typename Few>
void widen(const uchar *bytes, size_t count, float *samples)
{
    size_t at = 0;
    for (; at + lanes <= count; at += lanes) {
        Few few;
        std::memcpy(&few, bytes + at * sizeof(Sample), sizeof(few));
        const auto wide = __builtin_convertvector(few, Floats);
        std::memcpy(samples + at, &wide, sizeof(wide));
    }
    for (; at < count; ++at) {
        Sample sample = 0;
        std::memcpy(&sample, bytes + at * sizeof(Sample), sizeof(sample));
        samples[at] = sample;
    }
}

} // namespace

PlaneConverter::PlaneConverter(HevcPicture picture, const CodedColor &color)
    : m_picture(std::move(picture))
    , m_curve(ToneCurve::table(color.transfer))
{
    const auto width = padded(m_picture.size().width());
    for (auto &samples : m_samples) {
        samples.assign(width, 0);
    }
    m_nearer.resize(width);
    m_farther.resize(width);
    prepare(color);
}

void PlaneConverter::prepare(const CodedColor &color)
{
    const int bits = m_picture.bits();
    const double top = m_curve != nullptr ? ToneCurve::steps - 1 : 255;
    const auto brightness = brightnessScale(bits, color.fullRange);
    auto chroma = colorScale(bits, color.fullRange);
    // Rows are red, green, blue; columns the planes.
    std::array<std::array<double, 3>, 3> matrix = {};
    if (m_picture.planeCount() < 3) {
        matrix = {{{1, 0, 0}, {1, 0, 0}, {1, 0, 0}}};
    } else if (color.matrix == identityMatrix) {
        matrix = {{{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}};
        chroma = brightness;
    } else {
        const auto [red, blue] = sharesOf(color.matrix);
        const double green = 1 - red - blue;
        const double redStep = 2 * (1 - red);
        const double blueStep = 2 * (1 - blue);
        matrix = {{{1, 0, redStep},
                   {1, -blueStep * blue / green, -redStep * red / green},
                   {1, blueStep, 0}}};
    }
    for (size_t row = 0; row < 3; ++row) {
        double offset = 0.5; // rounds
        for (size_t plane = 0; plane < 3; ++plane) {
            const auto &scale = plane == 0 ? brightness : chroma;
            const double weight = matrix.at(row).at(plane) * top / scale.range;
            m_mixes.at(row).weights.at(plane) = static_cast<float>(weight);
            offset -= weight * scale.zero;
        }
        m_mixes.at(row).offset = static_cast<float>(offset);
    }
}

void PlaneConverter::readRow(const HevcPicture::Plane &plane, int row, Samples &samples) const
{
    const auto *const bytes = plane.bytes + row * plane.stride;
    const auto count = static_cast<size_t>(plane.size.width());
    if (m_picture.bits() > 8) {
        widen<quint16, FewShorts>(bytes, count, samples.data());
    } else {
        widen<quint8, FewBytes>(bytes, count, samples.data());
    }
}

void PlaneConverter::readChroma(int index, int row)
{
    const auto plane = m_picture.plane(index);
    const auto size = m_picture.size();
    auto &samples = m_samples.at(static_cast<size_t>(index));
    const bool halfHeight = plane.size.height() < size.height();
    const bool halfWidth = plane.size.width() < size.width();
    auto &nearer = halfWidth ? m_nearer : samples;
    readRow(plane, halfHeight ? row / 2 : row, nearer);
    if (halfHeight) {
        const int other = row / 2 + ((row & 1) != 0 ? 1 : -1);
        readRow(plane, std::clamp(other, 0, plane.size.height() - 1), m_farther);
        for (size_t at = 0; at < padded(plane.size.width()); at += lanes) {
            Floats one;
            Floats two;
            std::memcpy(&one, nearer.data() + at, sizeof(one));
            std::memcpy(&two, m_farther.data() + at, sizeof(two));
            one = one * 0.75F + two * 0.25F;
            std::memcpy(nearer.data() + at, &one, sizeof(one));
        }
    }
    if (halfWidth) {
        const auto last = static_cast<size_t>(plane.size.width()) - 1;
        for (size_t column = 0; column < last; ++column) {
            samples[2 * column] = nearer[column];
            samples[2 * column + 1] = (nearer[column] + nearer[column + 1]) * 0.5F;
        }
        for (size_t column = 2 * last; column < samples.size(); ++column) {
            samples[column] = nearer[last];
        }
    }
}

template<typename Store>
void PlaneConverter::mixRow(int top, Store store) const
{
    const auto highest = static_cast<float>(top);
    for (size_t at = 0; at < m_samples[0].size(); at += lanes) {
        std::array<Floats, 3> planes;
        for (size_t plane = 0; plane < 3; ++plane) {
            std::memcpy(&planes[plane], m_samples[plane].data() + at, sizeof(Floats));
        }
        std::array<Integers, 3> colors;
        for (size_t color = 0; color < 3; ++color) {
            const auto &mix = m_mixes[color];
            Floats sum = planes[0] * mix.weights[0] + planes[1] * mix.weights[1] +
                         planes[2] * mix.weights[2] + mix.offset;
            sum = sum < 0 ? Floats{} : sum;
            sum = sum > highest ? Floats{} + highest : sum;
            colors[color] = __builtin_convertvector(sum, Integers);
        }
        store(at, colors);
    }
}

void PlaneConverter::convert(int row, QRgb *pixels)
{
    readRow(m_picture.plane(0), row, m_samples[0]);
    for (int plane = 1; plane < m_picture.planeCount(); ++plane) {
        readChroma(plane, row);
    }
    const auto width = static_cast<size_t>(size().width());
    if (m_curve == nullptr) {
        mixRow(255, [&](size_t at, const std::array<Integers, 3> &colors) {
            const Integers packed =
                (colors[0] << 16) | (colors[1] << 8) | colors[2] | static_cast<int>(0xff000000);
            std::memcpy(pixels + at, &packed, sizeof(QRgb) * std::min(lanes, width - at));
        });
        return;
    }
    mixRow(ToneCurve::steps - 1, [&](size_t at, const std::array<Integers, 3> &colors) {
        for (size_t lane = 0; lane < std::min(lanes, width - at); ++lane) {
            const auto shown = [&](size_t color) {
                return (*m_curve)[static_cast<size_t>(colors[color][lane])];
            };
            pixels[at + lane] = qRgb(shown(0), shown(1), shown(2));
        }
    });
}
