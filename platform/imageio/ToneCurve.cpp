// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/ToneCurve.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int pq = 16;
constexpr int hlg = 18;

/// cd/m².
constexpr double peak = 1000;
constexpr double white = 203;

// The constants of PQ (ITU-R BT.2100, table 4).
constexpr double m1 = 2610.0 / 16384;
constexpr double m2 = 2523.0 / 4096 * 128;
constexpr double c1 = 3424.0 / 4096;
constexpr double c2 = 2413.0 / 4096 * 32;
constexpr double c3 = 2392.0 / 4096 * 32;
constexpr double pqPeak = 10000;

/// Luminance in cd/m² as PQ codes it, 0 to 1, and back.
double toPq(double luminance)
{
    const double power = std::pow(std::max(luminance, 0.0) / pqPeak, m1);
    return std::pow((c1 + c2 * power) / (1 + c3 * power), m2);
}

double fromPq(double code)
{
    const double power = std::pow(code, 1 / m2);
    return pqPeak * std::pow(std::max(power - c1, 0.0) / (c2 - c3 * power), 1 / m1);
}

/// BT.2100, table 5: the light of the scene, then what a screen makes of it.
double fromHlg(double code)
{
    constexpr double a = 0.17883277;
    constexpr double b = 1 - 4 * a;
    const double c = 0.5 - a * std::log(4 * a);
    constexpr double systemGamma = 1.2; // of a screen of 1000 cd/m²
    const double scene = code <= 0.5 ? code * code / 3 : (std::exp((code - c) / a) + b) / 12;
    return peak * std::pow(scene, systemGamma);
}

/// BT.2390, 5.4.1, from black to @p luminance.
double drawnIn(double luminance)
{
    const double top = toPq(peak);
    const double highest = toPq(white) / top;
    const double knee = 1.5 * highest - 0.5;
    const double level = std::min(toPq(luminance) / top, 1.0);
    if (level < knee) {
        return luminance;
    }
    const double t = (level - knee) / (1 - knee);
    const double square = t * t;
    const double cube = square * t;
    const double curved = (2 * cube - 3 * square + 1) * knee +
                          (cube - 2 * square + t) * (1 - knee) + (3 * square - 2 * cube) * highest;
    return fromPq(curved * top);
}

double toSrgb(double light)
{
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

ToneCurve::Table make(double (*luminance)(double))
{
    ToneCurve::Table table = {};
    for (size_t step = 0; step < table.size(); ++step) {
        const double code = double(step) / (ToneCurve::steps - 1);
        const double light = std::clamp(drawnIn(luminance(code)) / white, 0.0, 1.0);
        table.at(step) = static_cast<quint8>(std::lround(255 * toSrgb(light)));
    }
    return table;
}

} // namespace

const ToneCurve::Table *ToneCurve::table(int transfer)
{
    if (transfer == pq) {
        static const auto table = make(fromPq);
        return &table;
    }
    if (transfer == hlg) {
        static const auto table = make(fromHlg);
        return &table;
    }
    return nullptr;
}
