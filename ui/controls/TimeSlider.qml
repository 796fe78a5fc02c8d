// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// A thin white line with a handle, over a picture.
T.Slider {
    id: root

    property string name: ""

    implicitWidth: 320
    implicitHeight: 24
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.Slider
    Accessible.name: root.name

    background: Rectangle {
        x: root.leftPadding
        y: (root.height - height) / 2
        width: root.availableWidth
        height: 4
        radius: 2
        color: Qt.rgba(1, 1, 1, 0.35)

        Rectangle {
            width: root.visualPosition * parent.width
            height: parent.height
            radius: 2
            color: Look.white
        }
    }

    handle: Rectangle {
        x: root.leftPadding + root.visualPosition * (root.availableWidth - width)
        y: (root.height - height) / 2
        width: 14
        height: 14
        radius: 7
        color: Look.white
    }
}
