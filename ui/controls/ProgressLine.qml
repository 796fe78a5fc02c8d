// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kestle

// How far something is.
T.ProgressBar {
    id: root

    property string name: qsTr("Progress")

    implicitWidth: 320
    implicitHeight: 6

    Accessible.role: Accessible.ProgressBar
    Accessible.name: root.name

    background: Rectangle {
        radius: 3
        color: Look.control
    }

    contentItem: Item {
        Rectangle {
            width: root.visualPosition * root.width
            height: root.height
            radius: 3
            color: Look.blue
        }
    }
}
