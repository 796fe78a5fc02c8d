// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/card/CaptureSettings.h"

#include <QImage>

/// Writes a RAW file (DNG 1.4): the sensor's picture behind a colour filter, and the camera's own
/// picture as a full-size preview. Pure.
namespace DngWriter {

/// @p stored is the finished picture as stored (RGB32), @p preview the same as a JPEG file.
[[nodiscard]] QByteArray bytes(const QImage &stored, const QByteArray &preview,
                               const CaptureSettings &settings);

} // namespace DngWriter
