// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/TiffColors.h"

#include "platform/imageio/LabColors.h"
#include "platform/imageio/SrgbCurve.h"
#include "platform/imageio/TiffSamples.h"

#include <algorithm>

using Colors = TiffLayout::Colors;

namespace {

constexpr int most = 65535;

/// Of 65535 to of 255, rounded.
int narrow(int value)
{
    return (value * 255 + 32895) >> 16;
}

int product(int one, int other)
{
    return static_cast<int>((qint64{one} * other + most / 2) / most);
}

} // namespace

TiffColors::TiffColors(const TiffLayout &layout, int width, Floating floating)
    : m_layout(layout)
    , m_floating(floating)
{
    const auto channels =
        size_t(layout.colorSamples) + (layout.alpha == TiffLayout::Alpha::Separate ? 1 : 0);
    m_values.assign(channels, Values(size_t(width)));
}

std::vector<int> TiffColors::planes(const TiffLayout &layout)
{
    std::vector<int> result = {0};
    if (!layout.isPlanar) {
        return result;
    }
    for (int sample = 1; sample < layout.colorSamples; ++sample) {
        result.push_back(sample);
    }
    // Colours that are multiplied by the alpha lie on black already.
    if (layout.alpha == TiffLayout::Alpha::Separate) {
        result.push_back(layout.alphaSample);
    }
    return result;
}

void TiffColors::convert(const std::vector<const uchar *> &rows, int count, QRgb *pixels)
{
    for (size_t channel = 0; channel < m_values.size(); ++channel) {
        const bool isAlpha = channel == size_t(m_layout.colorSamples);
        TiffSamples::unpack(m_layout, m_layout.isPlanar ? rows[channel] : rows[0],
                            isAlpha ? m_layout.alphaSample : static_cast<int>(channel), count,
                            m_values[channel].data());
    }
    const auto &values = m_values;
    const auto each = [&](auto colour) {
        for (size_t at = 0; at < size_t(count); ++at) {
            pixels[at] = colour(at);
        }
    };
    const auto &curve = SrgbCurve::codes();
    const bool isLight = m_layout.numbers == TiffLayout::Numbers::Floating &&
                         m_floating == Floating::Light && m_layout.colors != Colors::Inks;
    const auto code = [&](int value) {
        return isLight ? int{curve[size_t(value)]} : narrow(value);
    };
    switch (m_layout.colors) {
    case Colors::Light:
    case Colors::Darkness: {
        const int inversion = m_layout.colors == Colors::Darkness ? most : 0;
        each([&](size_t at) {
            const int grey = code(values[0][at] ^ inversion);
            return qRgb(grey, grey, grey);
        });
        break;
    }
    case Colors::Palette: {
        const auto &palette = m_layout.palette;
        const auto entries = palette.size() / 3;
        each([&](size_t at) {
            const auto entry = std::min(size_t{values[0][at]}, entries - 1);
            return qRgb(narrow(palette[entry]), narrow(palette[entries + entry]),
                        narrow(palette[2 * entries + entry]));
        });
        break;
    }
    case Colors::Rgb:
        each([&](size_t at) {
            return qRgb(code(values[0][at]), code(values[1][at]), code(values[2][at]));
        });
        break;
    case Colors::Inks:
        each([&](size_t at) {
            const int paper = most - values[3][at];
            const auto light = [&](size_t ink) {
                return narrow(product(most - values[ink][at], paper));
            };
            return qRgb(light(0), light(1), light(2));
        });
        break;
    case Colors::Lab:
    case Colors::IccLab:
        convertLab(count, pixels);
        break;
    case Colors::Converted:
        break;
    }
    if (m_layout.alpha == TiffLayout::Alpha::Separate) {
        applyAlpha(count, pixels);
    }
}

/// TIFF 6.0, section 23, and its supplement for ICC's way of writing.
void TiffColors::convertLab(int count, QRgb *pixels)
{
    const bool wide = m_layout.bits == 16;
    const bool icc = m_layout.colors == Colors::IccLab;
    // The unpacked numbers are of 16 bits, those of a byte in both halves.
    const int sign = icc ? 0 : wide ? 0x8000 : 0x8080;
    const double unit = wide ? 256 : 257;
    const double white = wide && icc ? 0xff00 : most;
    for (size_t at = 0; at < size_t(count); ++at) {
        const auto chroma = [&](size_t channel) {
            return (m_values[channel][at] ^ sign) / unit - 128;
        };
        pixels[at] = LabColors::toSrgb(100 * m_values[0][at] / white, chroma(1), chroma(2));
    }
}

void TiffColors::applyAlpha(int count, QRgb *pixels)
{
    const auto &alpha = m_values.back();
    for (size_t at = 0; at < size_t(count); ++at) {
        const auto on = [&](int value) { return product(value * 257, alpha[at]); };
        pixels[at] = qRgb(narrow(on(qRed(pixels[at]))), narrow(on(qGreen(pixels[at]))),
                          narrow(on(qBlue(pixels[at]))));
    }
}
