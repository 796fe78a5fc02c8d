// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/card/FilmLook.h"

#include <QByteArray>
#include <QDateTime>
#include <QPoint>

#include <optional>

/// What the camera knew when it took a shot.
struct CaptureSettings {
    QDateTime captured = {};    ///< the camera's clock; written as it stands
    double exposureTime = 0.01; ///< seconds
    double aperture = 4;        ///< f-number
    int iso = 200;
    double focalLength = 35; ///< millimetres
    QByteArray lens = "XF35mmF1.4 R";
    int orientation = 1;                ///< Exif code of the stored pixels
    std::optional<QPoint> subject = {}; ///< in focus, in stored pixels
    FilmLook look = {};
};
