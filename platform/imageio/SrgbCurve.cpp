// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/SrgbCurve.h"

#include <cmath>

double SrgbCurve::code(double light)
{
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

const std::vector<quint8> &SrgbCurve::codes()
{
    static const auto table = [] {
        constexpr int white = 65535;
        std::vector<quint8> result(white + 1);
        for (int light = 0; light <= white; ++light) {
            result[static_cast<size_t>(light)] =
                static_cast<quint8>(std::lround(255 * code(double(light) / white)));
        }
        return result;
    }();
    return table;
}
