// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/imageio/LabColors.h"

#include "platform/imageio/SrgbCurve.h"

#include <algorithm>

/// The inverse of the lightness curve of CIE 15, 8.2.1.
static double amount(double root)
{
    constexpr double bend = 6.0 / 29;
    return root > bend ? root * root * root : 3 * bend * bend * (root - 4.0 / 29);
}

static int code(double light)
{
    constexpr double white = 65535;
    return SrgbCurve::codes()[static_cast<size_t>(std::clamp(light, 0.0, 1.0) * white + 0.5)];
}

QRgb LabColors::toSrgb(double lightness, double a, double b)
{
    const double root = (lightness + 16) / 116;
    const double x = 0.9642 * amount(root + a / 500);
    const double y = amount(root);
    const double z = 0.8249 * amount(root - b / 200);
    // sRGB's primaries under D50, by Bradford's adaptation.
    return qRgb(code(3.1338561 * x - 1.6168667 * y - 0.4906146 * z),
                code(-0.9787684 * x + 1.9161415 * y + 0.0334540 * z),
                code(0.0719453 * x - 0.2289914 * y + 1.4052427 * z));
}
