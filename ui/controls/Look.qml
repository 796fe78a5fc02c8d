// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma Singleton

import QtQuick

// Colours and text sizes of the whole application.
QtObject {
    id: root

    // Of the screen that the main window is on; until it is on one, what makes text of its usual size.
    property real dotsPerMillimetre: 96 / 25.4
    // The desktop's text size: a resolution of 96 dots per inch is 1.
    property real textFactor: Math.min(Math.max(root.dotsPerMillimetre * 25.4 / 96, 0.75), 3)

    readonly property color black: "#000000"
    readonly property color white: "#ffffff"
    readonly property color primary: Qt.rgba(1, 1, 1, 0.92)
    readonly property color secondary: Qt.rgba(1, 1, 1, 0.6)
    readonly property color tertiary: Qt.rgba(1, 1, 1, 0.45)
    readonly property color red: "#ff453a"
    readonly property color green: "#30d158"
    readonly property color yellow: "#ffd60a"
    readonly property color grey: "#8e8e93"
    readonly property color blue: "#0a84ff"

    // Surfaces of controls, from the ground up.
    readonly property color raised: "#2c2c2e"
    readonly property color control: "#3a3a3c"
    readonly property color controlHovered: "#48484a"
    readonly property color line: Qt.rgba(1, 1, 1, 0.14)

    readonly property int title: root.pixels(22)
    readonly property int title3: root.pixels(15)
    readonly property int headline: root.pixels(13)
    readonly property int body: root.pixels(13)
    readonly property int callout: root.pixels(12)
    readonly property int caption: root.pixels(10)

    readonly property string monospaced: "monospace"

    function pixels(points: real): int {
        return Math.round(points * root.textFactor);
    }
}
