// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/decode/ScreenMaxPixel.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

class ScreenMaxPixelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutAScreenItIs2160() { QCOMPARE(screenMaxPixel(nullptr), 2160); }

    void itIsTheHeightInPixelsAndNotTheWidth()
    {
        const auto *screen = QGuiApplication::primaryScreen();
        const auto pixels = screen->geometry().height() * screen->devicePixelRatio();

        QCOMPARE(screenMaxPixel(screen), int(pixels));
        QVERIFY(screenMaxPixel(screen) > 0);
    }
};

QTEST_MAIN(ScreenMaxPixelTest)
#include "ScreenMaxPixelTest.moc"
