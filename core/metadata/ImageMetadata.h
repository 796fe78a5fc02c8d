// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/metadata/FujiSettings.h"

#include <QDateTime>
#include <QPointF>
#include <QString>

#include <optional>

/// The capture settings of one file. A field is absent when the file does not carry it.
struct ImageMetadata {
    /// Pixels as stored, before the orientation is applied.
    std::optional<qint64> pixelWidth = {};
    std::optional<qint64> pixelHeight = {};
    /// The f-number.
    std::optional<double> aperture = {};
    /// Seconds.
    std::optional<double> exposureTime = {};
    std::optional<qint64> iso = {};
    std::optional<QString> lensModel = {};
    /// In UTC; for pictures the wall-clock digits of the camera, which knows no zone.
    std::optional<QDateTime> captureDate = {};
    /// The centre of the subject, in pixels.
    std::optional<QPointF> subjectArea = {};
    /// The orientation code of EXIF, 1 to 8.
    std::optional<qint64> orientation = {};
    std::optional<FujiSettings> fuji = {};

    /// The exposure time for display, "1/250s" or, from 0.4 s on, "0.5s". Absent without a time
    /// above zero that is finite and has a finite inverse.
    [[nodiscard]] std::optional<QString> exposureText() const;

    bool operator==(const ImageMetadata &) const = default;
};
