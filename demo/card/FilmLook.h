// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

/// The in-camera look of a shot, in the codes of a Fujifilm maker note.
struct FilmLook {
    quint16 filmMode = 0;       ///< 0 Provia, 0x200 Velvia, 0x600 Classic Chrome, …
    quint16 saturation = 0;     ///< 0 colour, 0x500 Acros, …
    quint16 dynamicRange = 100; ///< per cent; 0 leaves the choice to the camera
    qint32 shadowTone = 0;      ///< -16 a step up
    qint32 highlightTone = 0;   ///< -16 a step up
    qint32 grainRoughness = 0;  ///< 0, 0x20 weak, 0x40 strong
    quint16 grainSize = 0;      ///< 0, 0x10 small, 0x20 large
    qint32 colorChrome = 0;     ///< 0, 0x20 weak, 0x40 strong
    qint32 colorChromeBlue = 0;
    qint32 shiftRed = 0; ///< white balance, 20 a step
    qint32 shiftBlue = 0;

    bool operator==(const FilmLook &) const = default;
};
