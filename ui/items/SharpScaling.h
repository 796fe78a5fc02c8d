// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>

class QThreadPool;

/// Scales bitmaps up and down by the cubic filter of Catmull and Rom, which leaves them sharp.
/// Works on the coded values, as viewers do. For any thread.
namespace SharpScaling {

/// The part @p source of @p image, which holds it, at the size @p target, both at least a pixel.
/// Opaque bitmaps of 32 bits a pixel are scaled as promised, others by Qt's smooth transformation.
/// Threads of @p helpers that are idle take part; what they have begun is waited for, so that
/// nobody works on the bitmaps afterwards.
[[nodiscard]] QImage scaled(const QImage &image, QRect source, QSize target,
                            QThreadPool *helpers = nullptr);

} // namespace SharpScaling
