// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffSamples.h"

#include <QFloat16>

#include <algorithm>
#include <cstring>

namespace {

constexpr int most = 65535;

/// Whole numbers from 0 to the largest as numbers from 0 to 65535.
quint16 scaled(quint8 value)
{
    return static_cast<quint16>(value * 257);
}

quint16 scaled(quint16 value)
{
    return value;
}

quint16 scaled(quint32 value)
{
    return static_cast<quint16>(value >> 16);
}

/// Of signed numbers nothing is darker than 0.
template<typename Signed>
quint16 scaledSigned(Signed value)
{
    constexpr auto largest = std::numeric_limits<Signed>::max();
    return static_cast<quint16>(qint64{std::max(value, Signed{0})} * most / largest);
}

/// 1 is white, what is more is too. Not a number is black.
template<typename Floating>
quint16 scaledFloating(Floating value)
{
    const auto light = static_cast<double>(value);
    return light > 0 ? static_cast<quint16>(std::min(light, 1.0) * most + 0.5) : quint16{0};
}

template<typename T, typename Scale>
void unpackBytes(const uchar *row, int sample, int stride, int count, quint16 *values, Scale scale)
{
    const auto *source = row + size_t(sample) * sizeof(T);
    for (int at = 0; at < count; ++at, source += size_t(stride) * sizeof(T)) {
        T value;
        std::memcpy(&value, source, sizeof(T));
        values[at] = scale(value);
    }
}

/// Several samples in a byte, the first in the highest bits.
void unpackBits(const TiffLayout &layout, const uchar *row, int sample, int stride, int count,
                quint16 *values)
{
    const int largest = (1 << layout.bits) - 1;
    const int step =
        layout.colors == TiffLayout::Colors::Palette && sample == 0 ? 1 : most / largest;
    qint64 bit = qint64{sample} * layout.bits;
    for (int at = 0; at < count; ++at, bit += qint64{stride} * layout.bits) {
        const int value = row[bit / 8] >> (8 - layout.bits - bit % 8) & largest;
        values[at] = static_cast<quint16>(value * step);
    }
}

} // namespace

qint64 TiffSamples::rowLength(const TiffLayout &layout, qint64 count)
{
    return (count * (layout.isPlanar ? 1 : layout.samples) * layout.bits + 7) / 8;
}

void TiffSamples::unpack(const TiffLayout &layout, const uchar *row, int sample, int count,
                         quint16 *values)
{
    using Colors = TiffLayout::Colors;
    using Numbers = TiffLayout::Numbers;
    const int stride = layout.isPlanar ? 1 : layout.samples;
    const int place = layout.isPlanar ? 0 : sample;
    const bool isIndex = layout.colors == Colors::Palette && sample == 0;
    const bool isLab = layout.colors == Colors::Lab || layout.colors == Colors::IccLab;
    // What has a sign in Lab is known from the place, whatever the tag says.
    const auto numbers = isLab ? Numbers::Unsigned : layout.numbers;

    const auto unpackAs = [&]<typename T>(T, auto scale) {
        unpackBytes<T>(row, place, stride, count, values, scale);
    };
    if (layout.bits < 8) {
        unpackBits(layout, row, place, stride, count, values);
    } else if (isIndex) {
        unpackAs(quint8{}, [](quint8 value) { return quint16{value}; });
    } else if (numbers == Numbers::Floating) {
        if (layout.bits == 16) {
            unpackAs(qfloat16{}, [](qfloat16 value) { return scaledFloating(float(value)); });
        } else if (layout.bits == 32) {
            unpackAs(float{}, scaledFloating<float>);
        } else {
            unpackAs(double{}, scaledFloating<double>);
        }
    } else if (numbers == Numbers::Signed) {
        if (layout.bits == 8) {
            unpackAs(qint8{}, scaledSigned<qint8>);
        } else if (layout.bits == 16) {
            unpackAs(qint16{}, scaledSigned<qint16>);
        } else {
            unpackAs(qint32{}, scaledSigned<qint32>);
        }
    } else if (layout.bits == 8) {
        unpackAs(quint8{}, [](quint8 value) { return scaled(value); });
    } else if (layout.bits == 16) {
        unpackAs(quint16{}, [](quint16 value) { return scaled(value); });
    } else {
        unpackAs(quint32{}, [](quint32 value) { return scaled(value); });
    }
}
