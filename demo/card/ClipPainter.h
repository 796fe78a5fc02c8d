// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "demo/card/PlannedClip.h"

#include <QImage>

/// Paints the frames of a clip as the sensor sees them. A hand holds the camera, so they sway.
class ClipPainter {
public:
    static constexpr QSize sensor{960, 540};
    static constexpr int framesPerSecond = 25;

    /// Paints the scene once; the frames are cut from it.
    explicit ClipPainter(const PlannedClip &clip);

    /// RGB32, of the sensor's size.
    [[nodiscard]] QImage frame(int number) const;

private:
    PlannedClip m_clip;
    QSize m_size; ///< of the frame as it is looked at
    QImage m_scene;
    QImage m_flake;
};
