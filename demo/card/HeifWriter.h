// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/card/CaptureSettings.h"

#include <QImage>

/// Writes HEIF pictures as mirrorless cameras do: HEVC, 10 bits, 4:2:2, a small picture beside the
/// large one, and what the camera knew. Thread-safe; the same picture gives the same bytes.
namespace HeifWriter {

struct Written {
    QByteArray bytes;     ///< a whole file; empty when there is a problem
    QString problem = {}; ///< why it could not be made, for the user
};

/// The sides of a picture are multiples of this, the coding block. Other pictures libheif and x265
/// fill up, in part with whatever is in memory.
constexpr int block = 32;

/// @p stored is the finished picture as stored (RGB32), of whole blocks. The file says to turn it
/// for display.
[[nodiscard]] Written write(const QImage &stored, const CaptureSettings &settings);

} // namespace HeifWriter
