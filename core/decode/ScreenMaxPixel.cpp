// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/decode/ScreenMaxPixel.h"

#include <QScreen>

static constexpr int withoutScreen = 2160;

int screenMaxPixel(const QScreen *screen)
{
    return screen ? int(screen->geometry().height() * screen->devicePixelRatio()) : withoutScreen;
}
