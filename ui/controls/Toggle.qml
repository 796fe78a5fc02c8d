// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// A switch with its text.
T.Switch {
    id: root

    readonly property real slotWidth: 38
    readonly property real slotHeight: 22

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(implicitContentHeight, root.slotHeight) + topPadding + bottomPadding
    rightPadding: root.slotWidth + 12

    Accessible.role: Accessible.CheckBox
    Accessible.name: root.text
    Accessible.checkable: true
    Accessible.checked: root.checked

    contentItem: Text {
        text: root.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        color: Look.white
        font.pixelSize: Look.body
    }

    indicator: Rectangle {
        x: root.width - width
        y: (root.height - height) / 2
        width: root.slotWidth
        height: root.slotHeight
        radius: height / 2
        color: root.checked ? Look.blue : root.hovered ? Look.controlHovered : Look.control
        border.width: root.visualFocus ? 2 : 0
        border.color: Qt.rgba(1, 1, 1, 0.75)

        Rectangle {
            x: root.checked ? parent.width - width - 2 : 2
            y: 2
            width: root.slotHeight - 4
            height: width
            radius: width / 2
            color: root.down ? Qt.darker(Look.white, 1.15) : Look.white
        }
    }
}
